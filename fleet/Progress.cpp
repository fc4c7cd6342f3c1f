// SPDX-License-Identifier: MIT
#include "Progress.h"

#include "ShownText.h"
#include "Terminal.h"

#include <iostream>

namespace fleet {

namespace {

constexpr const char *clearLine = "\r\x1b[K"; // ECMA-48: erase to the end of the line
constexpr int nameColumns = 40;

std::string minutesAndSeconds(std::chrono::seconds time)
{
    const auto seconds = std::to_string(time.count() % 60);
    return std::to_string(time.count() / 60) + (seconds.size() < 2 ? ":0" : ":") + seconds;
}

} // namespace

Progress::Progress(std::size_t total, bool isQuiet)
    : total(total), isShown(!isQuiet && platform::hasErrorTerminal())
{}

Progress::~Progress()
{
    if (isShown)
        std::cerr << clearLine << std::flush;
}

void Progress::show(std::size_t done, const std::string &name)
{
    if (!isShown)
        return;
    std::string line = clearLine + std::to_string(done) + " of " + std::to_string(total) + ", " +
                       fittedTo(shownText(name), nameColumns);
    if (done > 0) {
        const auto spent = std::chrono::steady_clock::now() - begin;
        const auto left = spent / static_cast<long>(done) * static_cast<long>(total - done);
        line += ", " + minutesAndSeconds(std::chrono::duration_cast<std::chrono::seconds>(left)) + " left";
    }
    std::cerr << line << std::flush;
}

} // namespace fleet
