// SPDX-License-Identifier: MIT
#include "Interruption.h"
#include "Terminal.h"

#include <iostream>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace fleet::platform {

namespace {

// Ctrl-C ends a read, perhaps before its handler has set the flag, on another thread.
constexpr DWORD interruptionMs = 100;

bool isConsole(DWORD stream)
{
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(stream), &mode) != 0;
}

/// The console shows nothing of what is typed as long as it lives.
class NoEcho
{
public:
    NoEcho() : input(GetStdHandle(STD_INPUT_HANDLE))
    {
        if (GetConsoleMode(input, &before) != 0)
            SetConsoleMode(input, before & ~static_cast<DWORD>(ENABLE_ECHO_INPUT));
    }
    NoEcho(const NoEcho &) = delete;
    NoEcho &operator=(const NoEcho &) = delete;
    ~NoEcho()
    {
        SetConsoleMode(input, before);
        std::cerr << '\n' << std::flush;
    }

private:
    const HANDLE input;
    DWORD before = 0;
};

/// \return false at the end of the input, for an empty line, and after an interruption
bool readLine(std::string &line)
{
    const bool isThere = std::getline(std::cin, line) && !line.empty();
    if (!isThere)
        Sleep(interruptionMs);
    return isThere && !isInterrupted();
}

} // namespace

int outputWidth()
{
    CONSOLE_SCREEN_BUFFER_INFO info = {};
    if (GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) == 0)
        return 0;
    return info.srWindow.Right - info.srWindow.Left + 1;
}

bool hasErrorTerminal()
{
    return isConsole(STD_ERROR_HANDLE);
}

bool canAsk()
{
    return isConsole(STD_INPUT_HANDLE) && hasErrorTerminal();
}

std::optional<Secret> askSecret(const std::string &prompt)
{
    std::cerr << prompt << std::flush;
    const NoEcho silence;
    std::string line;
    if (!readLine(line))
        return std::nullopt;
    return Secret(std::move(line));
}

std::optional<std::string> askLine(const std::string &prompt)
{
    std::cerr << prompt << std::flush;
    std::string line;
    if (!readLine(line))
        return std::nullopt;
    return line;
}

} // namespace fleet::platform
