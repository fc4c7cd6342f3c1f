// SPDX-License-Identifier: MIT
#include "Pattern.h"

#include <cstddef>

namespace fleet {

// What stands behind the last star met is tried further and further on; the stars before it have their run already.
bool matches(std::string_view pattern, std::string_view text)
{
    std::size_t inPattern = 0;
    std::size_t inText = 0;
    std::size_t behindStar = std::string_view::npos;
    std::size_t runEnd = 0;
    while (inText < text.size()) {
        if (inPattern < pattern.size() && pattern[inPattern] == '*') {
            behindStar = ++inPattern;
            runEnd = inText;
        } else if (inPattern < pattern.size() && pattern[inPattern] == text[inText]) {
            ++inPattern;
            ++inText;
        } else if (behindStar != std::string_view::npos) {
            inPattern = behindStar;
            inText = ++runEnd;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', inPattern) == std::string_view::npos;
}

} // namespace fleet
