// SPDX-License-Identifier: MIT
// What is wrong with a command line or a password file is told in one line on standard error, with status 2
// and before any camera is touched; and what files and answers are accepted.
#include "ConsoleProgram.h"
#include "Environment.h"
#include "Simulator.h"
#include "System.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

using testing::Contains;
using testing::HasSubstr;

namespace {

/// With the simulator's one camera, locked by the password hunter22.
class ConsoleRun : public testing::Test
{
protected:
    ConsoleRun() { std::filesystem::current_path(simulator.folder()); }

    Simulator simulator;
    Environment search{"GENICAM_GENTL64_PATH", std::filesystem::path(simulator.cti()).parent_path().string()};
};

TEST_F(ConsoleRun, EndsWithStatusTwoForEachFault)
{
    const std::string readError = "Can't read a password from standard input: ";
    const struct
    {
        std::vector<std::string> arguments;
        std::string message;
        std::string input{};
    } faults[] = {
        {{"--lock", "--colour"}, "Unknown option or surplus argument '--colour'"},
        {{"--list"}, "Unknown option or surplus argument '--list'"}, // no abbreviations
        {{"--serial"}, "--serial: 1 required SERIAL missing"},
        {{"--serial", ""}, "--serial: the value is empty"},
        {{"--password=", "--lock"}, "--password: the value is empty"}, // doesn't take the next argument
        {{"--new-password", "--lock"},
         "--new-password: the value is missing, since --lock is an option itself. If it is the value, write "
         "--new-password=--lock"},
        {{"--serial", "--password=secret"},
         "--serial: the value is missing, since --password is an option itself. If it is the value, write "
         "--serial=--password=..."},
        {{"--serial", "1", "--serial", "2"}, "--serial: At Most 1 required but received 2"},
        {{"--password", "a", "--password-file", "b"},
         "--password and --password-file can't be used together. Give one of them."},
        {{"--new-password-file", "-", "--new-password", "b"},
         "--new-password and --new-password-file can't be used together. Give one of them."},
        {{"--list-devices", "--library", "some.cti"},
         "--library can't be used with --list-devices, which shows what the search finds. Name the "
         "producer's folder in GENICAM_GENTL64_PATH instead."},
        {{"--list-libraries", "--lock"}, "--lock can't be used with --list-libraries, which only lists."},
        {{"--password-file", "no-such-file"},
         "Can't read a password from 'no-such-file': No such file or directory"},
        {{"--new-password-file", "."}, "Can't read a password from '.': " + testsystem::readFolderWords()},
        {{"--password-file", "-"}, readError + "the first line is empty", "\nx"},
        {{"--password-file", "-"}, readError + "the first line is empty", "\xef\xbb\xbf\r\n"},
        {{"--password-file", "-", "--new-password-file", "-"}, readError + "there is no line", "hunter22\n"},
        {{"--password-file", "-"},
         readError + "the first line holds a zero byte; the file must be plain text, such as UTF-8",
         std::string("h\0u\0", 4)},
        {{"--password-file", "-"},
         readError + "the first line is longer than 4096 bytes",
         std::string(4097, 'x')},
    };
    for (const auto &fault : faults) {
        const Outcome outcome = runConsole(fault.arguments, fault.input);
        EXPECT_EQ(outcome.status, 2) << fault.message;
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.errors, "torvane_console: " + fault.message + "\nTry 'torvane_console --help'.\n");
    }
    EXPECT_TRUE(simulator.calls().empty());
}

TEST_F(ConsoleRun, TakesThePasswordFromTheFirstLineOfAFile)
{
    // What the camera is sent is zero-filled to 8 bytes at least.
    const std::pair<std::string, std::string> rows[] = {
        {"hunter22", "68 75 6e 74 65 72 32 32"},
        {"hunter22\nsecond line", "68 75 6e 74 65 72 32 32"},
        {"hunter22\r\r\n", "68 75 6e 74 65 72 32 32 0d 00 00 00"},
        {" \tx \n", "20 09 78 20 00 00 00 00"},
        {"\xef\xbb\xbf\xc3\xbc\r\n", "c3 bc 00 00 00 00 00 00"},
        {"\xef\xbb\xbf\xef\xbb\xbf\n", "ef bb bf 00 00 00 00 00"},
        {"a\x1a"
         "b\n",
         "61 1a 62 00 00 00 00 00"}, // which ends a text of Windows
    };
    for (const auto &[content, onTheWire] : rows) {
        std::ofstream("password", std::ios::binary) << content;
        for (const std::string file : {"password", "-"}) {
            simulator.clearLog();
            EXPECT_EQ(runConsole({"--password-file", file, "--lock"}, content).status, 0);
            EXPECT_THAT(simulator.portTraffic(), Contains("write 0x50002040 " + onTheWire))
                << file << ' ' << content;
        }
    }
}

TEST_F(ConsoleRun, TakesPasswordsThatLookLikeOptions)
{
    EXPECT_EQ(runConsole({"--password=--locK"}).status, 0);
    EXPECT_THAT(simulator.portTraffic(), testing::Contains("write 0x50002040 2d 2d 6c 6f 63 4b 00 00"));
    EXPECT_EQ(runConsole({"--password", "--locK"}).status, 0);
    EXPECT_EQ(runConsole({"--password=--lock"}).status, 0);
}

TEST_F(ConsoleRun, SpeaksUtf8OnEveryWay)
{
    const std::string password = "\xc3\xbc"; // ü
    const auto sent = [&](const std::vector<std::string> &arguments, const std::string &input = "") {
        simulator.clearLog();
        runConsole(arguments, input);
        return simulator.portTraffic();
    };
    const auto itsBytes = Contains("write 0x50002040 c3 bc 00 00 00 00 00 00");
    EXPECT_THAT(sent({"--password", password}), itsBytes);
    EXPECT_THAT(sent({"--password-file", "-"}, password), itsBytes);
    EXPECT_THAT(sent({}, "u\n" + password + "\nq\n"), itsBytes);
    std::ofstream("k\xc3\xbc.txt") << password;
    EXPECT_THAT(sent({"--password-file", "k\xc3\xbc.txt"}), itsBytes);
}

TEST_F(ConsoleRun, FindsProducersAndTheirFilesUnderAnyName)
{
    namespace fs = std::filesystem;
    fs::copy_file(simulator.configPath(), simulator.folder() / u8"cfgü.toml");
    const Environment config("TORVANE_SIM_CONFIG", simulator.folder().string() + "/cfg\xc3\xbc.toml");
    for (const std::u8string name : {u8"Geräte", u8"カメラ"}) {
        const fs::path folder = simulator.folder() / name;
        fs::create_directory(folder);
        fs::copy_file(simulator.cti(), folder / (name + u8".cti"));
        const Environment there("GENICAM_GENTL64_PATH",
                                simulator.folder().string() + '/' + std::string(name.begin(), name.end()));
        const Outcome list = runConsole({"--list-devices"});
        EXPECT_EQ(list.errors, "");
        EXPECT_THAT(list.output, HasSubstr("G5-0001"));
    }
}

TEST_F(ConsoleRun, TakesALineOfTheGreatestLength)
{
    const Outcome outcome =
        runConsole({"--password-file", "-"}, "\xef\xbb\xbf" + std::string(4096, 'x') + "\r\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, HasSubstr("Wrong password?\nExiting program... Device is locked.\n"));
}

TEST_F(ConsoleRun, AnswersWithoutTouchingACamera)
{
    const Outcome version = runConsole({"--version", "--lock"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.output, "torvane_console 1.0.0.0\n");

    const Outcome help = runConsole({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.errors, "");
    EXPECT_THAT(help.output, HasSubstr("So it is after a wrong password too"));
    EXPECT_THAT(help.output,
                HasSubstr("(*.cti), separated by " + std::string(testsystem::listSeparatorWords) + ".\n"));
    std::istringstream lines(help.output);
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(line.size(), 80U) << line;
    EXPECT_TRUE(simulator.calls().empty());
}

} // namespace
