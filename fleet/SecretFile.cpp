// SPDX-License-Identifier: MIT
#include "SecretFile.h"

#include "FilePrivacy.h"
#include "InputBuffer.h"
#include "SecretLine.h"
#include "UsageError.h"

namespace fleet {

namespace {

/// Bytes. More than any camera takes, and enough to show that a line is no password.
constexpr std::size_t longestPasswordLine = 4096;

/// Hands a stream over \p name and what it is called to \p use.
template <class Use>
auto withFile(const std::string &name, Use use)
{
    InputBuffer buffer(name);
    if (const std::string fault = name == "-" ? "" : platform::privacyFault(name); !fault.empty())
        throw UsageError(buffer.title() + " holds secrets. " + fault);
    InputStream input(buffer);
    return use(input, buffer.title());
}

} // namespace

Secret readSecretFile(const std::string &name)
{
    return withFile(name, [](std::istream &input, const std::string &title) {
        std::string line;
        const WipeAtEnd wiped(line);
        const bool isThere = readSecretLine(input, line, longestPasswordLine, true);
        if (!isThere || line.empty())
            throw UsageError(title + " has no password in its first line.");
        if (line.size() > longestPasswordLine)
            throw UsageError(title + " has a first line of more than 4096 bytes, which is no password.");
        return Secret(std::move(line));
    });
}

PasswordsFile readPasswordsFile(const std::string &name, bool needsNew)
{
    return withFile(name, [&](std::istream &input, const std::string &title) {
        return PasswordsFile::read(input, title, needsNew);
    });
}

} // namespace fleet
