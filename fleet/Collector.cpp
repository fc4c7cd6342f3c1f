// SPDX-License-Identifier: MIT
#include "Collector.h"

#include <sstream>

namespace fleet {

namespace {

constexpr std::string_view errorMark = "ERROR: ";
constexpr std::string_view messageMark = "Msg: ";

std::string_view trimmed(std::string_view line)
{
    const std::size_t begin = line.find_first_not_of(" \t\r");
    if (begin == std::string_view::npos)
        return {};
    return line.substr(begin, line.find_last_not_of(" \t\r") + 1 - begin);
}

} // namespace

bool Collector::hasError() const
{
    return lines.starts_with(errorMark) || lines.find('\n' + std::string(errorMark)) != std::string::npos;
}

std::string Collector::text() const
{
    std::string joined;
    std::istringstream input(lines);
    for (std::string whole; std::getline(input, whole);) {
        std::string_view line = trimmed(whole);
        for (const std::string_view mark : {errorMark, messageMark}) {
            if (line.starts_with(mark))
                line.remove_prefix(mark.size());
        }
        if (line.empty())
            continue;
        if (!joined.empty())
            joined += ' ';
        joined += line;
    }
    return joined;
}

} // namespace fleet
