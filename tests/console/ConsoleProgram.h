// SPDX-License-Identifier: MIT
// Runs torvane_console as a user or a script does: a process of its own, with the environment of the test.
// Commands are for the shell, which finds the program by its name.
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

/// What a run left behind.
struct Outcome
{
    int status = 0; ///< the exit status; -1 if a signal ended it
    std::string output;
    std::string errors;
};

/// Runs the program to its end in the current folder, where temporary files go too. More than a mebibyte of output ends
/// it by a signal.
/// \param input  all of its standard input, which then ends
Outcome runConsole(const std::vector<std::string> &arguments, const std::string &input = {});

/// The exit status of \p command; -1 if a signal ended it.
int runShell(const std::string &command);

/// All that \p command shows on a terminal of its own, on which nobody types.
std::string shownOnTerminal(const std::string &command);

/// All bytes of a file, or with std::ios::in its text, with the line ends of the standard library; none if there is no
/// such file.
inline std::string contentOf(const std::string &file, std::ios::openmode mode = std::ios::binary)
{
    std::ostringstream text;
    text << std::ifstream(file, mode).rdbuf();
    return text.str();
}
