// SPDX-License-Identifier: MIT
// Texts and numbers out of XML elements, as descriptions write them.
#pragma once

#include <pugixml.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace GenApi_3_2_TVN {

/// \a text without white space at both ends.
std::string_view trimmed(std::string_view text);

/// The text of an element without white space at both ends; comments within it are passed over.
std::string textOf(pugi::xml_node element);

/// Decimal, or hexadecimal behind 0x, each with an optional sign. Numbers from 2^63 to 2^64 - 1 give the
/// negative number of the same bits. Empty when \p text is anything else or too large.
std::optional<std::int64_t> parseInteger(std::string_view text);

/// Decimal with an optional fraction and exponent, INF, NaN, or hexadecimal as for parseInteger. What a double
/// can't hold gives infinity or zero: descriptions write the largest double with too few digits, rounded up.
/// Empty when \p text is anything else.
std::optional<double> parseReal(std::string_view text);

} // namespace GenApi_3_2_TVN
