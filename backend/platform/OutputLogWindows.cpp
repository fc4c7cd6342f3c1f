// SPDX-License-Identifier: MIT
// Not by way of stdout: a runtime without that stream can't open it anew.
#include "OutputLogWindows.h"

#include <cstdlib>
#include <iostream>
#include <iterator>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace console {

namespace {

constexpr std::streamoff mostBytes = 1'000'000;

} // namespace

OutputLog &OutputLog::instance()
{
    static OutputLog &log = *new OutputLog; // std::cout writes to it to the very end
    return log;
}

void OutputLog::open()
{
    const char *const local = std::getenv("LOCALAPPDATA");
    if (!local)
        return;
    const std::string folder = std::string(local) + "\\torvane";
    CreateDirectoryA(folder.c_str(), nullptr); // it may be there
    path = folder + "\\torvane.log";
    file.open(path, std::ios::app | std::ios::ate);
    if (!file)
        return;
    cut();
    std::cout.rdbuf(file.rdbuf());
    std::cerr.rdbuf(file.rdbuf());
}

bool OutputLog::write(std::string_view text)
{
    const std::lock_guard guard(mutex);
    if (!file.is_open())
        return false;
    file << text << std::flush;
    cut();
    return true;
}

// The newer half stays, from the start of a line on.
void OutputLog::cut()
{
    if (file.tellp() <= mostBytes)
        return;
    std::ifstream whole(path);
    whole.seekg(-mostBytes / 2, std::ios::end);
    std::string line;
    std::getline(whole, line);
    const std::string newer{std::istreambuf_iterator<char>(whole), {}};
    whole.close();
    file.close();
    std::ofstream(path) << newer;
    file.open(path, std::ios::app | std::ios::ate);
}

} // namespace console
