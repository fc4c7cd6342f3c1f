// SPDX-License-Identifier: MIT
#include "ConsoleProgram.h"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

constexpr std::size_t floodBytes = 1024 * 1024;

/// For the shell. No argument of a test holds an apostrophe.
std::string quoted(const std::string &text)
{
    return '\'' + text + '\'';
}

std::string withProgram(const std::string &command)
{
    return "PATH=" + quoted(std::filesystem::path(TORVANE_CONSOLE).parent_path()) + ":$PATH\n" + command;
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

int runShell(const std::string &command)
{
    const int state = std::system(withProgram(command).c_str());
    return WIFEXITED(state) ? WEXITSTATUS(state) : -1;
}

std::string shownOnTerminal(const std::string &command)
{
    const std::string script = withProgram("stty -opost -echo\n" + command); // line ends as they were printed
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        execl("/bin/sh", "sh", "-c", script.c_str(), nullptr);
        _exit(127);
    }
    std::string shown;
    std::array<char, 4096> bytes{};
    for (ssize_t count = 0; (count = read(terminal, bytes.data(), bytes.size())) > 0;)
        shown.append(bytes.data(), static_cast<std::size_t>(count));
    close(terminal);
    waitpid(child, nullptr, 0);
    return shown;
}
