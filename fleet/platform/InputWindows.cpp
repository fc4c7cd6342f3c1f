// SPDX-License-Identifier: MIT
#include "Input.h"
#include "Interrupted.h"

#include <fcntl.h>
#include <io.h>

#include <cerrno>
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
    const int count = checked(_read(descriptor, bytes, static_cast<unsigned>(size)));
    throwIfInterrupted();
    return static_cast<std::size_t>(count);
}

} // namespace fleet::platform
