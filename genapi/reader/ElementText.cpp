// SPDX-License-Identifier: MIT
// See the header.
#include "ElementText.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace GenApi_3_2_TVN {
namespace {

/// \a text without its sign, if it has one.
std::string_view withoutSign(std::string_view text)
{
    return text.starts_with('-') || text.starts_with('+') ? text.substr(1) : text;
}

bool isHexadecimal(std::string_view magnitude)
{
    return magnitude.starts_with("0x") || magnitude.starts_with("0X");
}

/// What stands behind the "e" of a number, cut to what a sum with places of digits can hold.
std::int64_t exponentOf(std::string_view text)
{
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max() / 2;
    const std::string_view digits = withoutSign(text);
    std::int64_t exponent = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    if (result.ec == std::errc::result_out_of_range)
        exponent = largest;
    exponent = std::min(exponent, largest);
    return text.starts_with('-') ? -exponent : exponent;
}

/// For a decimal number that is too large or too small for a double: which of the two its first digit says.
double beyondDouble(std::string_view magnitude)
{
    const std::size_t exponentSign = std::min(magnitude.find_first_of("eE"), magnitude.size());
    const std::string_view digits = magnitude.substr(0, exponentSign);
    const std::int64_t exponent = exponentOf(magnitude.substr(std::min(exponentSign + 1, magnitude.size())));
    const auto point = static_cast<std::int64_t>(std::min(digits.find('.'), digits.size()));
    const auto first = static_cast<std::int64_t>(digits.find_first_of("123456789"));
    return point - first + exponent < 0 ? 0 : std::numeric_limits<double>::infinity();
}

} // namespace

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
    text = withoutSign(text);
    const bool hexadecimal = isHexadecimal(text);
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

std::optional<double> parseReal(std::string_view text)
{
    text = trimmed(text);
    const std::string_view magnitude = withoutSign(text);
    if (isHexadecimal(magnitude)) {
        const std::optional<std::int64_t> integer = parseInteger(text);
        return integer ? std::optional{static_cast<double>(*integer)} : std::nullopt;
    }
    double real = 0;
    const char *const last = magnitude.data() + magnitude.size();
    const auto [end, error] = std::from_chars(magnitude.data(), last, real);
    if (end != last || magnitude.starts_with('-'))
        return std::nullopt;
    if (error == std::errc::result_out_of_range)
        real = beyondDouble(magnitude);
    else if (error != std::errc{})
        return std::nullopt;
    return text.starts_with('-') ? -real : real;
}

} // namespace GenApi_3_2_TVN
