// SPDX-License-Identifier: MIT
#include "Output.h"

#include "ShownText.h"

#include <cerrno>
#include <cstdio>
#include <iostream>

namespace fleet {

namespace {

bool isLost = false;

} // namespace

bool writeResult(std::string_view text)
{
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0)
        return true;
    isLost = isLost || errno != EPIPE;
    return false;
}

bool hasLostResults()
{
    return isLost;
}

void complain(const std::string &sentence)
{
    std::cerr << "torvane: " + shownText(sentence) + '\n' << std::flush;
}

} // namespace fleet
