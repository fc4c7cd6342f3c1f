// SPDX-License-Identifier: MIT
#include "SecretFile.h"

#include "FilePrivacy.h"
#include "SecretLine.h"
#include "UsageError.h"

#include <cerrno>
#include <fstream>
#include <iostream>
#include <system_error>

namespace fleet {

namespace {

/// Bytes. More than any camera takes, and enough to show that a line is no password.
constexpr std::size_t longestPasswordLine = 4096;

/// Opens \p name, or takes standard input, and hands the stream and what it is called to \p use.
template <class Use>
auto withFile(const std::string &name, Use use)
{
    if (name == "-")
        return use(static_cast<std::istream &>(std::cin), std::string("Standard input"));
    const std::string title = "The file '" + name + "'";
    errno = 0;
    std::ifstream file(name, std::ios::binary);
    if (!file)
        throw UsageError(
            title + " can't be read: " + std::generic_category().message(errno != 0 ? errno : EIO) + '.');
    if (const std::string fault = platform::privacyFault(name); !fault.empty())
        throw UsageError(title + " holds secrets. " + fault);
    return use(static_cast<std::istream &>(file), title);
}

} // namespace

Secret readSecretFile(const std::string &name)
{
    return withFile(name, [](std::istream &input, const std::string &title) {
        std::string line;
        const WipeAtEnd wiped(line);
        const bool isThere = readSecretLine(input, line, longestPasswordLine, true);
        if (input.bad())
            throw UsageError(title + " can't be read.");
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
