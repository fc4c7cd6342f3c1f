// SPDX-License-Identifier: MIT
#include "Output.h"

#include "ShownText.h"

#include <cstdio>
#include <iostream>

namespace fleet {

bool writeResult(std::string_view text)
{
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
}

void complain(const std::string &sentence)
{
    std::cerr << "torvane: " + shownText(sentence) + '\n' << std::flush;
}

} // namespace fleet
