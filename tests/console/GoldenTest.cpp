// SPDX-License-Identifier: MIT
// Whole runs of torvane_console: arguments and standard input against standard output to the last byte, and
// the exit status. Scripts of users read these texts, so a blank more or less is a fault.
//
// runs/NAME.in is standard input (no file: an ended one), runs/NAME.expected is standard output, with "<folder>/" for
// the folder of the producer and "<no file PATH>" for the loader's words. runs/CAMERAS.toml configures the simulated cameras.
#include "ConsoleProgram.h"
#include "Environment.h"
#include "LoadedModule.h"
#include "Simulator.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Invocation
{
    std::string name; // of the files
    std::vector<std::string> arguments;
    int status = 0;
};

/// Runs on the same cameras one after the other: what one left, the next one finds.
struct Session
{
    std::string cameras;
    std::vector<Invocation> runs;
};

void PrintTo(const Session &session, std::ostream *stream)
{
    *stream << session.runs.front().name;
}

std::string readRunFile(const std::string &name)
{
    return contentOf(TORVANE_CONSOLE_RUNS "/" + name);
}

std::string replaceAll(std::string text, std::string_view from, std::string_view to)
{
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

/// Puts in what differs from one machine to the other.
std::string onThisPlatform(const std::string &text, const std::string &producers)
{
    const std::string joiner(1, static_cast<char>(std::filesystem::path::preferred_separator));
    const std::string named = replaceAll(text, "<folder>/", producers + joiner);
    return replaceAll(named, "<no file ./none.cti>", testsystem::missingFileCode("./none.cti"));
}

class GoldenTest : public testing::TestWithParam<Session>
{};

TEST_P(GoldenTest, PrintsWhatIsExpected)
{
    const std::string cameras = readRunFile(GetParam().cameras + ".toml");
    ASSERT_FALSE(cameras.empty());
    Simulator simulator(cameras);
    std::filesystem::path folder = std::filesystem::path(simulator.cti()).parent_path();
    const std::string producers = folder.make_preferred().string();
    const Environment search("GENICAM_GENTL64_PATH", producers);
    std::filesystem::current_path(simulator.folder());

    for (const Invocation &run : GetParam().runs) {
        SCOPED_TRACE(run.name);
        std::vector<std::string> arguments = run.arguments;
        for (std::string &argument : arguments)
            argument = onThisPlatform(argument, producers);
        simulator.clearLog();
        const Outcome outcome = runConsole(arguments, readRunFile(run.name + ".in"));
        EXPECT_EQ(outcome.output, onThisPlatform(readRunFile(run.name + ".expected"), producers));
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(outcome.status, run.status);
        EXPECT_EQ(simulator.openHandles(), 0);
    }
}

const std::vector<Session> sessions{
    {"several", {{"list-devices", {"--list-devices"}}, {"list-libraries", {"--list-libraries"}}}},
    {"several", {{"odd-indices", {}}}},
    {"several", {{"negative-index", {}}}},
    {"several", {{"index-c", {}}, {"index-q", {}}, {"index-end", {}}}},
    {"several", {{"menu", {"--serial", "F-1"}}}},
    {"one", {{"odd-options", {}}}},
    {"one", {{"menu-end", {}}}},
    {"default", {{"first-password", {}}, {"first-password-found", {"--password", "hunter22"}}}},
    {"one", {{"unlock-retries", {}}}},
    {"one", {{"unlock-cancelled", {}}, {"unlock-end", {}}}},
    {"one", {{"change-refusals", {}}}},
    {"one", {{"change-end-new", {}}, {"change-end-confirm", {}}}},
    {"one", {{"menu-reset", {}}, {"reset-found", {"--list-devices"}}}},

    // A password given in advance: every row of what is done.
    {"one", {{"preset-change", {"--password", "hunter22", "--new-password", "sunnyday7"}}}},
    {"one", {{"preset-unlock", {"--password", "hunter22"}}}},
    {"one", {{"preset-wrong", {"--password", "hunter23", "--unlock"}}}},
    {"one", {{"preset-change-wrong", {"--password", "hunter23", "--new-password", "sunnyday7", "--lock"}}}},
    {"one", {{"preset-change-same", {"--password", "hunter22", "--new-password", "hunter22"}}}},
    {"default",
     {{"preset-default-change", {"--password", "mapleoak", "--new-password", "hunter22", "--lock"}}}},
    {"default",
     {{"preset-default-unlock", {"--password", "mapleoak", "--unlock"}},
      {"default-unlocked-listed", {"--list-devices"}}}},
    {"default", {{"preset-default", {"--password", "mapleoak"}}}},
    {"unlocked", {{"preset-lock", {"--lock"}}}},
    {"one", {{"preset-unlock-lock", {"--password", "hunter22", "--lock"}}}},
    {"one", {{"preset-new-alone", {"--new-password", "sunnyday7", "--unlock"}}}},
    {"one", {{"preset-reset", {"--factory-reset", "--password", "hunter23", "--lock"}}}},
    {"several", {{"preset-reset-unsupported", {"--serial", "N-4", "--factory-reset"}}}},
    {"one", {{"preset-library", {"--library", "<folder>/torvane_sim.cti", "--lock"}}}},

    {"one", {{"passwords-from-input", {"--password-file", "-", "--new-password-file", "-", "--lock"}}}},
    {"several", {{"password-then-answers", {"--password-file", "-"}}}},

    {"none", {{"no-camera", {}, 1}, {"no-camera-listed", {"--list-devices"}}}},
    {"several", {{"serial-not-found", {"--serial", "F-9"}, 1}}},
    {"several", {{"serial-busy", {"--serial", "B-6"}, 1}}},
    {"unopened", {{"not-opened", {}, 1}}},
    {"one", {{"library-not-found", {"--library", "./none.cti"}, 1}}},
};

INSTANTIATE_TEST_SUITE_P(Runs, GoldenTest, testing::ValuesIn(sessions));

} // namespace
