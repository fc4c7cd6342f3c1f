// SPDX-License-Identifier: MIT
#include "ConsoleProgram.h"
#include "Process.h"

#include <fstream>

Outcome runConsole(const std::vector<std::string> &arguments, const std::string &input)
{
    std::ofstream("input", std::ios::binary) << input;
    const int status = testsystem::Process(TORVANE_CONSOLE, arguments, "input", "output", "errors").wait();
    return {status, contentOf("output", std::ios::in), contentOf("errors", std::ios::in)};
}
