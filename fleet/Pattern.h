// SPDX-License-Identifier: MIT
// The one kind of pattern by which cameras are chosen: bytes that stand for themselves, and "*" for any run of bytes.
#pragma once

#include <string_view>

namespace fleet {

/// Whether \p pattern is one, and no plain text.
inline bool isPattern(std::string_view pattern)
{
    return pattern.find('*') != std::string_view::npos;
}

/// Whether \p pattern stands for \p text as a whole. Case counts. Takes time in proportion to the product of the lengths
/// at worst. Thread: any.
bool matches(std::string_view pattern, std::string_view text);

} // namespace fleet
