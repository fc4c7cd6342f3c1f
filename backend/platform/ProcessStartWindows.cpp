// SPDX-License-Identifier: MIT
// Windows knows no broken-pipe signal: a write to one just fails.
#include "ConsoleInputWindows.h"
#include "OutputLogWindows.h"
#include "ProcessStart.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace {

UINT inputBefore = 0; // code pages of the console; 0 without one
UINT outputBefore = 0;

bool isOpen(DWORD stream)
{
    return GetFileType(GetStdHandle(stream)) != FILE_TYPE_UNKNOWN;
}

void openStandardStreams()
{
    const bool hasOutput = isOpen(STD_OUTPUT_HANDLE);
    const bool hasErrors = isOpen(STD_ERROR_HANDLE);
    if (GetConsoleCP() == 0 && !hasOutput && !hasErrors)
        console::OutputLog::instance().open();
    if (!isOpen(STD_INPUT_HANDLE))
        std::freopen("NUL", "r", stdin);
    if (!hasOutput)
        std::freopen("NUL", "w", stdout);
    if (!hasErrors)
        std::freopen("NUL", "w", stderr);
}

// The console keeps them when this process has ended, for those who use it next.
void restoreCodePages()
{
    SetConsoleCP(inputBefore);
    SetConsoleOutputCP(outputBefore);
}

// Ctrl-C, or the close of the console, ends the process without what std::atexit asks for.
BOOL WINAPI onControl(DWORD /*event*/)
{
    restoreCodePages();
    return FALSE; // and it ends as it would have
}

// A password is one string of bytes, whether it is typed, piped or given as an argument: UTF-8, as the manifest has it
// for arguments and names of files.
void useUtf8()
{
    inputBefore = GetConsoleCP();
    outputBefore = GetConsoleOutputCP();
    if (inputBefore != 0 && outputBefore != 0) {
        std::atexit(restoreCodePages);
        SetConsoleCtrlHandler(onControl, TRUE);
        SetConsoleCP(CP_UTF8);
        SetConsoleOutputCP(CP_UTF8);
    }
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    if (DWORD mode = 0; GetConsoleMode(input, &mode)) {
        static console::ConsoleInput typed(input);
        std::cin.rdbuf(&typed);
    } else {
        _setmode(_fileno(stdin), _O_BINARY); // as text it would end at a byte 1A
    }
}

} // namespace

void prepareProcess()
{
    openStandardStreams();
    useUtf8();
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX); // no dump by the system's error reporting
}
