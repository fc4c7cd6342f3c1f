// SPDX-License-Identifier: MIT
// Windows knows no broken-pipe signal: a write to one just fails.
#include "ProcessStart.h"

#include <io.h>

#include <cstdio>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace {

void openStandardStreams()
{
    const auto open = [](std::FILE *stream, const char *mode) {
        if (_fileno(stream) < 0)
            std::freopen("NUL", mode, stream);
    };
    open(stdin, "r");
    open(stdout, "w");
    open(stderr, "w");
}

} // namespace

void prepareProcess()
{
    openStandardStreams();
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX); // no dump by the system's error reporting
}
