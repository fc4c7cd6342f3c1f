// SPDX-License-Identifier: MIT
// What is typed into a console of Windows reaches a camera in UTF-8.
#include "Environment.h"
#include "Simulator.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string_view>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace {

/// Types into the console of this process.
void type(std::wstring_view text)
{
    const HANDLE input = CreateFileA("CONIN$", GENERIC_READ | GENERIC_WRITE,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(input, INVALID_HANDLE_VALUE);
    for (const wchar_t character : text) {
        INPUT_RECORD record{};
        record.EventType = KEY_EVENT;
        record.Event.KeyEvent.bKeyDown = TRUE;
        record.Event.KeyEvent.wRepeatCount = 1;
        record.Event.KeyEvent.wVirtualKeyCode = character == L'\r' ? VK_RETURN : 0;
        record.Event.KeyEvent.uChar.UnicodeChar = character;
        DWORD count = 0;
        WriteConsoleInputW(input, &record, 1, &count);
        ASSERT_EQ(count, 1U) << GetLastError();
    }
    CloseHandle(input);
}

TEST(Typed, APasswordIsUtf8)
{
    Simulator simulator;
    const Environment search("GENICAM_GENTL64_PATH",
                             std::filesystem::path(simulator.cti()).parent_path().string());
    FreeConsole();
    ASSERT_TRUE(AllocConsole());
    std::string line = "torvane_console";
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION info{};
    type(L"u\r\u00fc\u30ab\U0001f600\r\x1a\r");
    ASSERT_TRUE(CreateProcessA(TORVANE_CONSOLE, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                               &start, &info));
    WaitForSingleObject(info.hProcess, INFINITE);
    CloseHandle(info.hThread);
    CloseHandle(info.hProcess);
    EXPECT_THAT(simulator.portTraffic(),
                testing::Contains("write 0x50002040 c3 bc e3 82 ab f0 9f 98 80 00 00 00"));
}

} // namespace
