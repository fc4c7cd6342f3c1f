// SPDX-License-Identifier: MIT
#include "Input.h"
#include "Interrupted.h"

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cerrno>
#include <iostream>
#include <system_error>

namespace fleet::platform {

namespace {

constexpr int standardInput = 0;

int checked(int result)
{
    if (result < 0)
        throw std::system_error(errno, std::generic_category());
    return result;
}

/// What is typed on the console, which std::cin has in UTF-8 (prepareProcess).
std::size_t readTyped(char *bytes, std::size_t size)
{
    std::streambuf &input = *std::cin.rdbuf();
    if (input.sgetc() == std::streambuf::traits_type::eof())
        return 0;
    const auto there = std::clamp<std::streamsize>(input.in_avail(), 1, static_cast<std::streamsize>(size));
    return static_cast<std::size_t>(input.sgetn(bytes, there));
}

} // namespace

Input::Input(const std::string &name)
    : descriptor(name == "-" ? standardInput : checked(_open(name.c_str(), _O_RDONLY | _O_BINARY)))
{}

Input::~Input()
{
    if (descriptor != standardInput)
        _close(descriptor);
}

std::size_t Input::read(char *bytes, std::size_t size)
{
    throwIfInterrupted();
    const std::size_t count =
        _isatty(descriptor) != 0
            ? readTyped(bytes, size)
            : static_cast<std::size_t>(checked(_read(descriptor, bytes, static_cast<unsigned>(size))));
    throwIfInterrupted();
    return count;
}

} // namespace fleet::platform
