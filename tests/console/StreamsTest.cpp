// SPDX-License-Identifier: MIT
// The program on streams as shells, scripts and terminals give them: readers that leave, streams that are closed, a
// terminal that acts on control bytes, and a command line that others read.
#include "ConsoleProgram.h"
#include "Environment.h"
#include "Simulator.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

using testing::Contains;
using testing::MatchesRegex;
using testing::StartsWith;

namespace {

// Two cameras, so that there is a question, and slow ones, so that a reader has left before the next line comes.
const std::string slowCameras = std::string("[producer]\nlatency_ms = 20\n") + Simulator::oneCamera +
                                "[[interface.camera]]\nid = \"sim-2\"\n";

class StreamsTest : public testing::Test
{
protected:
    StreamsTest() { std::filesystem::current_path(simulator.folder()); }

    Simulator simulator{slowCameras};
    Environment search{"GENICAM_GENTL64_PATH", std::filesystem::path(simulator.cti()).parent_path().string()};
};

TEST_F(StreamsTest, AReaderWhoLeavesEndsNeitherAnOperationNorTheLock)
{
    runShell("{ torvane_console --serial G5-0001 --password hunter22 --new-password sunnyday7 --lock; echo "
             "$? >status; "
             "} | grep -q 'Successfully unlocked'");
    EXPECT_EQ(contentOf("status"), "0\n");
    EXPECT_EQ(simulator.portTraffic().back(), "read 0x50001000 01 00 00 00");
    EXPECT_THAT(simulator.portTraffic(), Contains("write 0x50002000 73 75 6e 6e 79 64 61 79 37 00 00 00"));
    EXPECT_EQ(simulator.openHandles(), 0);

    runShell("{ torvane_console --list-devices; echo $? >status; } | head -n 1 >first");
    EXPECT_EQ(contentOf("status"), "0\n");
}

TEST_F(StreamsTest, NobodyAnswersAQuestionThatNobodySees)
{
    runShell("{ printf 'u\\nhunter22\\n' | torvane_console --serial G5-0001; echo $? >status; } | head -n 1");
    EXPECT_EQ(contentOf("status"), "0\n");
    EXPECT_THAT(simulator.portTraffic(), testing::Not(Contains(StartsWith("write"))))
        << "answers that were not asked for";

    const std::string table = shownOnTerminal("{ torvane_console; echo $? >status; } | head -n 4");
    EXPECT_THAT(table, testing::EndsWith("sim-2\n\n")) << "with the start of the question";
    EXPECT_EQ(contentOf("status"), "0\n");
    EXPECT_EQ(simulator.openHandles(), 0);
}

TEST_F(StreamsTest, AClosedStreamIsNoPlaceForTheFileOfAProducer)
{
    simulator.configure(Simulator::oneCamera);
    for (const std::string closed : {"<&-", ">&-", "2>&-", "<&- >&- 2>&-"}) {
        simulator.clearLog();
        EXPECT_EQ(runShell("torvane_console --serial G5-0001 --lock >output " + closed), 0) << closed;
        EXPECT_THAT(simulator.calls(), testing::Each(MatchesRegex("[A-Z][A-Za-z]+\\(.*\\) = .*"))) << closed;
    }
    EXPECT_EQ(runShell("torvane_console --colour 2>&-"), 2);
}

TEST_F(StreamsTest, ATerminalShowsTheControlBytesOfACamera)
{
    simulator.configure(
        "[[interface]]\nid = \"e\"\n[[interface.camera]]\nid = \"A\\t1\"\n"
        "model = \"Sim\\nSuccessfully locked!\"\nserial = \"\\u001b[2J\"\nuser_name = \"Tür\\u009b\"\n");
    const std::string header =
        "Model            | Serial           | UserDefined name | Lock status      | Id\n";
    EXPECT_EQ(shownOnTerminal("torvane_console --list-devices"),
              header +
                  "Sim\\x0aSuccessfully locked! | \\x1b[2J          | Tür\\xc2\\x9b     | locked           | "
                  "A\\x091\n");
    EXPECT_THAT(runConsole({"--list-devices"}).output,
                StartsWith(header + "Sim\nSuccessfully locked! | \x1b[2J "));
}

TEST_F(StreamsTest, NeitherTheListOfProcessesNorADumpShowsAPassword)
{
    runShell("mkfifo input; torvane_console --password geheim --new-password=sunnyday7 --unlock <input "
             ">output & exec 3>input\n"
             "until grep -q index output; do sleep 0.01; done\n"
             "tr '\\0' '|' </proc/$!/cmdline >arguments; grep core /proc/$!/limits >limits\n"
             "echo 1 >&3; wait");
    EXPECT_THAT(contentOf("limits"), MatchesRegex("Max core file size +0 +0 .*\n"));
    EXPECT_THAT(simulator.portTraffic(), Contains("write 0x50002040 67 65 68 65 69 6d 00 00"));
    if (contentOf("arguments").find("torvane_console|") != 0)
        GTEST_SKIP() << "The process is an emulator's, which keeps the arguments of its own";
    EXPECT_THAT(contentOf("arguments"),
                MatchesRegex("[^|]*[|]--password[|]{8}--new-password=[|]{10}--unlock[|]"));
}

} // namespace
