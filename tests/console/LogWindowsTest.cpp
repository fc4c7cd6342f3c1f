// SPDX-License-Identifier: MIT
// What the program prints when there is no console, as when a menu has started it: a file takes it.
#include "ConsoleProgram.h"
#include "Environment.h"
#include "Simulator.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <string>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

/// Runs the program to its end, without a console and standard streams.
void runDetached(const std::string &arguments)
{
    std::string line = "torvane_console " + arguments;
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES; // and there is none
    PROCESS_INFORMATION info{};
    ASSERT_TRUE(CreateProcessA(TORVANE_CONSOLE, line.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS,
                               nullptr, nullptr, &start, &info));
    WaitForSingleObject(info.hProcess, INFINITE);
    CloseHandle(info.hThread);
    CloseHandle(info.hProcess);
}

TEST(Log, TakesWhatIsPrintedAndIsCut)
{
    const Simulator simulator;
    const Environment search("GENICAM_GENTL64_PATH",
                             std::filesystem::path(simulator.cti()).parent_path().string());
    const Environment local("LOCALAPPDATA", simulator.folder().string());
    const std::string file = (simulator.folder() / "torvane" / "torvane.log").string();

    runDetached("--password hunter22 --new-password sunnyday7 --lock");
    runDetached("--colour");
    const std::string both = contentOf(file);
    EXPECT_THAT(both, HasSubstr("Successfully changed the password!"));
    EXPECT_THAT(both, EndsWith("'--colour'\r\nTry 'torvane_console --help'.\r\n")) << "from standard error";
    EXPECT_THAT(both, Not(HasSubstr("hunter22")));
    EXPECT_THAT(both, Not(HasSubstr("sunnyday7")));

    std::ofstream(file, std::ios::app) << std::string(1'200'000, 'x') << "\nlast\n";
    runDetached("--list-devices");
    const std::string rest = contentOf(file);
    EXPECT_LT(rest.size(), 1'000'000U);
    EXPECT_THAT(rest, HasSubstr("last\r\nModel "));
    EXPECT_THAT(rest, HasSubstr("G5-0001"));
}

} // namespace
