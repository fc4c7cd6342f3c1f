// SPDX-License-Identifier: MIT
#include "Interruption.h"

#include <atomic>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace fleet::platform {

namespace {

std::atomic<bool> interrupted = false;

// On a thread of its own.
BOOL WINAPI onControl(DWORD event)
{
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT && event != CTRL_CLOSE_EVENT)
        return FALSE;
    interrupted = true;
    return TRUE;
}

} // namespace

void watchInterruption()
{
    SetConsoleCtrlHandler(onControl, TRUE);
}

void ignoreInterruption() {} // no code of a child process runs before its program

bool isInterrupted()
{
    return interrupted;
}

} // namespace fleet::platform
