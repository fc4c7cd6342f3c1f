// SPDX-License-Identifier: MIT
// For Linux: what keeps a dump from programs that the kernel hands it to is Linux's own.
#include "ProcessStart.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <initializer_list>

namespace {

// Ascending, so that each open gets the number that is closed: the lowest free one.
void openStandardStreams()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) == -1 && errno == EBADF)
            open("/dev/null", O_RDWR);
    }
}

// The limit keeps the kernel from writing a file; a program that the kernel hands the dump to is not bound by it.
void switchCoreDumpsOff()
{
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    prctl(PR_SET_DUMPABLE, 0);
}

} // namespace

void prepareProcess()
{
    openStandardStreams();
    std::signal(SIGPIPE, SIG_IGN);
    switchCoreDumpsOff();
}
