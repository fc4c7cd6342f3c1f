// SPDX-License-Identifier: MIT
#include "ConsoleProgram.h"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

std::string withProgram(const std::string &command)
{
    const std::string folder = std::filesystem::path(TORVANE_CONSOLE).parent_path();
    return "PATH='" + folder + "':$PATH\n" + command;
}

} // namespace

Outcome runConsole(const std::vector<std::string> &arguments, const std::string &input)
{
    std::ofstream("input", std::ios::binary) << input;
    std::string command =
        "ulimit -f 2048; exec torvane_console"; // exec: a signal's end isn't the shell's status
    for (const std::string &argument : arguments)
        command += " '" + argument + '\''; // in which there is no apostrophe
    const int status = runShell(command + " <input >output 2>errors");
    return {status, contentOf("output"), contentOf("errors")};
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
