// SPDX-License-Identifier: MIT
// Whole runs of torvane_console: arguments and standard input against standard output to the last byte, and
// the exit status. Scripts of users read these texts, so a blank more or less is a fault.
//
// runs/NAME.in is standard input (no file: an ended one), runs/NAME.expected is standard output, with
// "<folder>" for the folder of the producer. runs/CAMERAS.toml configures the simulated cameras.
#include "ConsoleProgram.h"
#include "Environment.h"
#include "Simulator.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
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
    std::string name;
    std::string cameras;
    std::vector<Invocation> runs;
};

void PrintTo(const Session &session, std::ostream *stream)
{
    *stream << session.name;
}

std::string readRunFile(const std::string &name)
{
    std::ifstream file(std::filesystem::path(TORVANE_CONSOLE_RUNS) / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string replaceAll(std::string text, std::string_view from, std::string_view to)
{
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

class GoldenTest : public testing::TestWithParam<Session>
{};

TEST_P(GoldenTest, PrintsWhatIsExpected)
{
    const std::string cameras = readRunFile(GetParam().cameras + ".toml");
    ASSERT_FALSE(cameras.empty());
    Simulator simulator(cameras);
    const std::string producers = std::filesystem::path(simulator.cti()).parent_path();
    const Environment search("GENICAM_GENTL64_PATH", producers);
    std::filesystem::current_path(simulator.folder());

    for (const Invocation &run : GetParam().runs) {
        SCOPED_TRACE(run.name);
        std::vector<std::string> arguments = run.arguments;
        for (std::string &argument : arguments)
            argument = replaceAll(argument, "<folder>", producers);
        simulator.clearLog();
        const Outcome outcome = runConsole(arguments, readRunFile(run.name + ".in"), simulator.folder());
        EXPECT_EQ(replaceAll(outcome.output, producers, "<folder>"), readRunFile(run.name + ".expected"));
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(outcome.status, run.status);
        EXPECT_EQ(simulator.openHandles(), 0);
    }
}

const std::vector<Session> sessions{
    {"Lists", "several", {{"list-devices", {"--list-devices"}}, {"list-libraries", {"--list-libraries"}}}},
    {"OddIndices", "several", {{"odd-indices", {}}}},
    {"NegativeIndexWraps", "several", {{"negative-index", {}}}},
    {"IndexCancelled", "several", {{"index-c", {}}, {"index-q", {}}, {"index-end", {}}}},
    {"EveryMenuEntry", "several", {{"menu", {"--serial", "F-1"}}}},
    {"OddOptions", "one", {{"odd-options", {}}}},
    {"MenuEnd", "one", {{"menu-end", {}}}},
    {"FirstPassword",
     "default",
     {{"first-password", {}}, {"first-password-found", {"--password", "hunter22"}}}},
    {"UnlockRetries", "one", {{"unlock-retries", {}}}},
    {"UnlockCancelled", "one", {{"unlock-cancelled", {}}, {"unlock-end", {}}}},
    {"ChangeRefusals", "one", {{"change-refusals", {}}}},
    {"ChangeEnd", "one", {{"change-end-new", {}}, {"change-end-confirm", {}}}},
    {"MenuReset", "one", {{"menu-reset", {}}, {"reset-found", {"--list-devices"}}}},

    // A password given in advance: every row of what is done.
    {"PresetChange", "one", {{"preset-change", {"--password", "hunter22", "--new-password", "sunnyday7"}}}},
    {"PresetUnlock", "one", {{"preset-unlock", {"--password", "hunter22"}}}},
    {"PresetWrong", "one", {{"preset-wrong", {"--password", "hunter23", "--unlock"}}}},
    {"PresetChangeWrong",
     "one",
     {{"preset-change-wrong", {"--password", "hunter23", "--new-password", "sunnyday7", "--lock"}}}},
    {"PresetChangeSame",
     "one",
     {{"preset-change-same", {"--password", "hunter22", "--new-password", "hunter22"}}}},
    {"PresetDefaultChange",
     "default",
     {{"preset-default-change", {"--password", "mapleoak", "--new-password", "hunter22", "--lock"}}}},
    {"PresetDefaultUnlock",
     "default",
     {{"preset-default-unlock", {"--password", "mapleoak", "--unlock"}},
      {"default-unlocked-listed", {"--list-devices"}}}},
    {"PresetDefault", "default", {{"preset-default", {"--password", "mapleoak"}}}},
    {"PresetLock", "unlocked", {{"preset-lock", {"--lock"}}}},
    {"PresetUnlockThenLock", "one", {{"preset-unlock-lock", {"--password", "hunter22", "--lock"}}}},
    {"PresetNewPasswordAlone", "one", {{"preset-new-alone", {"--new-password", "sunnyday7", "--unlock"}}}},
    {"PresetReset", "one", {{"preset-reset", {"--factory-reset", "--password", "hunter23", "--lock"}}}},
    {"PresetResetWithoutSupport",
     "several",
     {{"preset-reset-unsupported", {"--serial", "N-4", "--factory-reset"}}}},
    {"PresetLibrary", "one", {{"preset-library", {"--library", "<folder>/torvane_sim.cti", "--lock"}}}},

    {"PasswordsFromInput",
     "one",
     {{"passwords-from-input", {"--password-file", "-", "--new-password-file", "-", "--lock"}}}},
    {"PasswordThenAnswers", "several", {{"password-then-answers", {"--password-file", "-"}}}},

    {"NoCamera", "none", {{"no-camera", {}, 1}, {"no-camera-listed", {"--list-devices"}}}},
    {"SerialNotFound", "several", {{"serial-not-found", {"--serial", "F-9"}, 1}}},
    {"SerialBusy", "several", {{"serial-busy", {"--serial", "B-6"}, 1}}},
    {"NotOpened", "unopened", {{"not-opened", {}, 1}}},
    {"LibraryNotFound", "one", {{"library-not-found", {"--library", "./none.cti"}, 1}}},
};

INSTANTIATE_TEST_SUITE_P(Runs, GoldenTest, testing::ValuesIn(sessions));

} // namespace
