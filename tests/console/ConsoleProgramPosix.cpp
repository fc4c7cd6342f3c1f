// SPDX-License-Identifier: MIT
#include "ConsoleProgram.h"

#include <sys/wait.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <iterator>

namespace {

constexpr std::size_t floodBytes = 1024 * 1024;

/// For the shell. No argument of a test holds an apostrophe.
std::string quoted(const std::string &text)
{
    return '\'' + text + '\'';
}

} // namespace

Outcome runConsole(const std::vector<std::string> &arguments, const std::string &input,
                   const std::filesystem::path &folder)
{
    const std::string inputFile = folder / "input";
    const std::string errorsFile = folder / "errors";
    std::ofstream(inputFile, std::ios::binary) << input;

    std::string command = "exec " + quoted(TORVANE_CONSOLE); // exec: a signal's end isn't the shell's status
    for (const std::string &argument : arguments)
        command += ' ' + quoted(argument);
    command += " <" + quoted(inputFile) + " 2>" + quoted(errorsFile);

    Outcome outcome;
    std::FILE *const program = popen(command.c_str(), "r");
    std::array<char, 4096> bytes{};
    for (std::size_t count = 0; outcome.output.size() < floodBytes &&
                                (count = std::fread(bytes.data(), 1, bytes.size(), program)) > 0;)
        outcome.output.append(bytes.data(), count);
    const int state = pclose(program);
    outcome.status = WIFEXITED(state) ? WEXITSTATUS(state) : -1;

    std::ifstream errors(errorsFile, std::ios::binary);
    outcome.errors.assign(std::istreambuf_iterator<char>(errors), {});
    return outcome;
}
