// SPDX-License-Identifier: MIT
#include "InputBuffer.h"

#include "UsageError.h"
#include "Wipe.h"

#include <system_error>

namespace fleet {

namespace {

constexpr std::size_t blockSize = 4096;

UsageError unreadable(const std::string &title, const std::system_error &failure)
{
    return UsageError(title + " can't be read: " + failure.code().message() + '.');
}

std::string titleOf(const std::string &name)
{
    return name == "-" ? "Standard input" : "The file '" + name + "'";
}

platform::Input opened(const std::string &name)
{
    try {
        return platform::Input(name);
    } catch (const std::system_error &failure) {
        throw unreadable(titleOf(name), failure);
    }
}

} // namespace

InputBuffer::InputBuffer(const std::string &name)
    : title_(titleOf(name)), input(opened(name)), bytes(blockSize, '\0')
{}

InputBuffer::~InputBuffer()
{
    wipe(bytes);
}

InputBuffer::int_type InputBuffer::underflow()
{
    try {
        const std::size_t count = input.read(bytes.data(), bytes.size());
        setg(bytes.data(), bytes.data(), bytes.data() + count);
    } catch (const std::system_error &failure) {
        throw unreadable(title_, failure);
    }
    return gptr() == egptr() ? traits_type::eof() : traits_type::to_int_type(*gptr());
}

} // namespace fleet
