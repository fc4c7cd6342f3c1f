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
    if (event == CTRL_CLOSE_EVENT)
        Sleep(INFINITE); // the return would end the process, as five seconds do in any case
    return TRUE;
}

} // namespace

void watchInterruption()
{
    SetConsoleCtrlHandler(onControl, TRUE);
}

bool isInterrupted()
{
    return interrupted;
}

} // namespace fleet::platform
