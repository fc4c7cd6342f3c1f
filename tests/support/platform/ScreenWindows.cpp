// SPDX-License-Identifier: MIT
#include "ScreenWindows.h"

#include <stdexcept>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace testsystem {

namespace {

HANDLE open(const char *name)
{
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return CreateFileA(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                       OPEN_EXISTING, 0, nullptr);
}

BOOL WINAPI onControl(DWORD /*event*/)
{
    return TRUE;
}

std::wstring wide(std::string_view text)
{
    std::wstring units(text.size(), L'\0');
    const int count = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                          units.data(), static_cast<int>(units.size()));
    units.resize(static_cast<std::size_t>(count));
    return units;
}

std::string narrow(const std::wstring &units)
{
    std::string text(units.size() * 3, '\0');
    const int count = WideCharToMultiByte(CP_UTF8, 0, units.data(), static_cast<int>(units.size()),
                                          text.data(), static_cast<int>(text.size()), nullptr, nullptr);
    text.resize(static_cast<std::size_t>(count));
    return text;
}

} // namespace

Screen::Screen()
{
    FreeConsole();
    if (!AllocConsole())
        throw std::runtime_error("there can be no console");
    SetConsoleCtrlHandler(onControl, TRUE);
    input = open("CONIN$");
    output = open("CONOUT$");
}

Screen::~Screen()
{
    if (process)
        CloseHandle(process);
    CloseHandle(output);
    CloseHandle(input);
    FreeConsole();
}

void Screen::start(const std::string &program, const std::string &arguments)
{
    std::string line = "program " + arguments;
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = input;
    start.hStdOutput = output;
    start.hStdError = output;
    PROCESS_INFORMATION info{};
    if (!CreateProcessA(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                        &info))
        throw std::runtime_error("can't start " + program);
    CloseHandle(info.hThread);
    process = info.hProcess;
}

bool Screen::isRunning() const
{
    return WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
}

int Screen::wait() const
{
    DWORD status = 0;
    WaitForSingleObject(process, INFINITE);
    GetExitCodeProcess(process, &status);
    return static_cast<int>(status);
}

void Screen::type(std::string_view text) const
{
    for (const wchar_t unit : wide(text)) {
        INPUT_RECORD record{};
        record.EventType = KEY_EVENT;
        record.Event.KeyEvent.bKeyDown = TRUE;
        record.Event.KeyEvent.wRepeatCount = 1;
        record.Event.KeyEvent.wVirtualKeyCode = unit == L'\n' ? VK_RETURN : 0;
        record.Event.KeyEvent.uChar.UnicodeChar = unit == L'\n' ? L'\r' : unit;
        DWORD count = 0;
        if (!WriteConsoleInputW(input, &record, 1, &count))
            throw std::runtime_error("can't type");
    }
}

std::string Screen::text() const
{
    CONSOLE_SCREEN_BUFFER_INFO info{};
    GetConsoleScreenBufferInfo(output, &info);
    const int size = info.dwCursorPosition.Y * info.dwSize.X + info.dwCursorPosition.X;
    std::wstring text(static_cast<std::size_t>(size), L' ');
    DWORD count = 0;
    ReadConsoleOutputCharacterW(output, text.data(), static_cast<DWORD>(size), {0, 0}, &count);
    return narrow(text);
}

bool Screen::isEchoOn() const
{
    DWORD mode = 0;
    return GetConsoleMode(input, &mode) && (mode & ENABLE_ECHO_INPUT) != 0;
}

} // namespace testsystem
