// SPDX-License-Identifier: MIT
// See the header.
#include "ElementText.h"

#include <charconv>
#include <limits>

namespace GenApi_3_2_TVN {

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view whiteSpace = " \t\r\n";
    const std::size_t first = text.find_first_not_of(whiteSpace);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

std::string textOf(pugi::xml_node element)
{
    std::string text;
    for (const pugi::xml_node child : element.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
            text += child.value();
    }
    return std::string{trimmed(text)};
}

std::optional<std::int64_t> parseInteger(std::string_view text)
{
    text = trimmed(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (hexadecimal)
        text.remove_prefix(2);

    std::uint64_t magnitude = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), magnitude, hexadecimal ? 16 : 10);
    if (error != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    constexpr auto largestNegative = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()) + 1;
    if (negative && magnitude > largestNegative)
        return std::nullopt;
    return static_cast<std::int64_t>(negative ? 0 - magnitude : magnitude);
}

} // namespace GenApi_3_2_TVN
