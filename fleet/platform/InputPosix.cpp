// SPDX-License-Identifier: MIT
#include "Input.h"
#include "Interrupted.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace fleet::platform {

namespace {

int checked(int result)
{
    if (result < 0)
        throw std::system_error(errno, std::generic_category());
    return result;
}

} // namespace

Input::Input(const std::string &name)
    : descriptor(name == "-" ? STDIN_FILENO
                             : checked(open(name.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY)))
{}

Input::~Input()
{
    if (descriptor != STDIN_FILENO)
        close(descriptor);
}

std::size_t Input::read(char *bytes, std::size_t size)
{
    constexpr int pollMs = 100; // a signal that comes just before a wait is seen after so long
    for (;;) {
        throwIfInterrupted();
        pollfd input{descriptor, POLLIN, 0};
        if (poll(&input, 1, pollMs) <= 0)
            continue;
        const ssize_t count = ::read(descriptor, bytes, size);
        if (count < 0 && (errno == EAGAIN || errno == EINTR))
            continue;
        return static_cast<std::size_t>(checked(static_cast<int>(count)));
    }
}

} // namespace fleet::platform
