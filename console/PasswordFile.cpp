// SPDX-License-Identifier: MIT
#include "PasswordFile.h"

#include "UsageError.h"
#include "Wipe.h"

#include <cerrno>
#include <fstream>
#include <iostream>
#include <string_view>
#include <system_error>
#include <vector>

namespace {

constexpr std::string_view byteOrderMark = "\xef\xbb\xbf"; // of UTF-8

[[noreturn]] void fail(const std::string &source, const std::string &fault)
{
    throw UsageError("Can't read a password from " + source + ": " + fault);
}

[[noreturn]] void failBySystem(const std::string &source, int error)
{
    fail(source, error != 0 ? std::generic_category().message(error) : "read error");
}

/// The bytes up to the line end, which is taken too, or up to the end of the input. Of a line that is too
/// long, as many as show it. They stay in one block of memory, so that no copy of a password is left behind.
std::string readLine(std::istream &input)
{
    constexpr std::size_t most =
        byteOrderMark.size() + maxPasswordLineBytes + 2; // a carriage return, one too many
    std::string line;
    line.reserve(most);
    for (char byte = 0; line.size() < most && input.get(byte) && byte != '\n';)
        line += byte;
    return line;
}

std::string readPassword(std::istream &input, const std::string &source)
{
    errno = 0;
    std::string line = readLine(input);
    if (input.bad())
        failBySystem(source, errno);
    if (line.empty() && input.eof())
        fail(source, "there is no line");
    if (line.starts_with(byteOrderMark))
        line.erase(0, byteOrderMark.size());
    if (line.ends_with('\r'))
        line.pop_back();
    if (line.empty())
        fail(source, "the first line is empty");
    if (line.find('\0') != std::string::npos)
        fail(source, "the first line holds a zero byte; the file must be plain text, such as UTF-8");
    if (line.size() > maxPasswordLineBytes)
        fail(source, "the first line is longer than " + std::to_string(maxPasswordLineBytes) + " bytes");
    return line;
}

} // namespace

std::string readPasswordFile(const std::string &name)
{
    if (name == "-")
        return readPassword(std::cin, "standard input");
    std::vector<char> bytes(maxPasswordLineBytes);
    const WipeAtEnd wipeBytes(bytes);
    errno = 0;
    std::ifstream file;
    file.rdbuf()->pubsetbuf(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.open(name, std::ios::binary);
    if (!file)
        failBySystem("'" + name + "'", errno);
    return readPassword(file, "'" + name + "'");
}
