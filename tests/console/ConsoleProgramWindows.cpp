// SPDX-License-Identifier: MIT
#include "ConsoleProgram.h"
#include "Process.h"

#include <fstream>
#include <sstream>

namespace {

/// What the program printed, with the line ends of the standard library.
std::string printedTo(const std::string &file)
{
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

} // namespace

Outcome runConsole(const std::vector<std::string> &arguments, const std::string &input)
{
    std::ofstream("input", std::ios::binary) << input;
    const int status = testsystem::Process(TORVANE_CONSOLE, arguments, "input", "output", "errors").wait();
    return {status, printedTo("output"), printedTo("errors")};
}

std::string contentOf(const std::string &file)
{
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}
