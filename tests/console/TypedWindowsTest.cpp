// SPDX-License-Identifier: MIT
// What is typed into a console of Windows reaches a camera in UTF-8, for which the console's code page changes.
#include "Environment.h"
#include "ScreenWindows.h"
#include "Simulator.h"

#include <gmock/gmock.h>

#include <filesystem>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace {

TEST(Typed, APasswordIsUtf8)
{
    Simulator simulator;
    const Environment search("GENICAM_GENTL64_PATH",
                             std::filesystem::path(simulator.cti()).parent_path().string());
    testsystem::Screen screen;
    screen.type("u\n\u00fc\u30ab\U0001f600\n\x1a\n");
    screen.start(TORVANE_CONSOLE, "");
    screen.wait();
    EXPECT_THAT(simulator.portTraffic(),
                testing::Contains("write 0x50002040 c3 bc e3 82 ab f0 9f 98 80 00 00 00"));
}

TEST(Typed, AnInterruptionLeavesTheConsoleAsItWas)
{
    const Simulator simulator;
    const Environment search("GENICAM_GENTL64_PATH",
                             std::filesystem::path(simulator.cti()).parent_path().string());
    testsystem::Screen screen;
    SetConsoleCP(850);
    screen.start(TORVANE_CONSOLE, "");
    while (GetConsoleCP() != CP_UTF8)
        Sleep(10);
    GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
    screen.wait();
    EXPECT_EQ(GetConsoleCP(), 850U);
}

} // namespace
