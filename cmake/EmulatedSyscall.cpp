// SPDX-License-Identifier: MIT
// Linked to every program of another processor that tests run under QEMU (scripts/test-arm64). QEMU 7.2 hands
// waitid(P_PIDFD) on to the kernel but refuses clone(CLONE_PIDFD): Qt asks for the first, takes it that there is the
// second too, and can start no process. So it is told that there is neither, and forks as on older kernels.
#include <dlfcn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdarg>

extern "C" long syscall(long number, ...) noexcept
{
    // As many as a system call can have: what the caller left out is of no meaning to the kernel either.
    std::array<long, 6> arguments{};
    va_list list;
    va_start(list, number);
    for (long &argument : arguments)
        argument = va_arg(list, long);
    va_end(list);
    if (number == SYS_waitid && arguments[0] == P_PIDFD) {
        errno = EINVAL;
        return -1;
    }
    static const auto next = reinterpret_cast<decltype(&syscall)>(dlsym(RTLD_NEXT, "syscall"));
    return next(number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4], arguments[5]);
}
