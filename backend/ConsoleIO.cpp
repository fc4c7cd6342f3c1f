// SPDX-License-Identifier: MIT
// Writing through stdio, whose calls lock the stream: a message is never cut by one of the other thread.
#include "ConsoleIO.h"

#include <cstdio>
#include <iostream>

namespace console {

void write(std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

std::optional<std::string> readLine()
{
    std::string line;
    if (!std::getline(std::cin, line))
        return std::nullopt;
    return line;
}

} // namespace console
