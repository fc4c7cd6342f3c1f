// SPDX-License-Identifier: MIT
// See the header.
#include "Number.h"

#include <array>
#include <charconv>
#include <cmath>

namespace GenApi_3_2_TVN {
namespace {

std::int64_t nearestWithin64Bits(double whole)
{
    if (const std::optional<std::int64_t> exact = wholeNumber(whole))
        return *exact;
    return whole < 0 ? lowestOf<std::int64_t> : highestOf<std::int64_t>;
}

} // namespace

/// 2^63 itself does not fit.
std::optional<std::int64_t> wholeNumber(double whole)
{
    if (!(whole >= -0x1p63 && whole < 0x1p63) || std::trunc(whole) != whole)
        return std::nullopt;
    return static_cast<std::int64_t>(whole);
}

double Number::real() const
{
    return std::visit([](auto number) { return static_cast<double>(number); }, value);
}

bool Number::isZero() const
{
    return std::visit([](auto number) { return number == 0; }, value);
}

std::optional<std::int64_t> Number::truncated() const
{
    if (const auto *const integer = std::get_if<std::int64_t>(&value))
        return *integer;
    return wholeNumber(std::trunc(std::get<double>(value)));
}

std::optional<std::int64_t> Number::rounded() const
{
    if (const auto *const integer = std::get_if<std::int64_t>(&value))
        return *integer;
    return wholeNumber(std::round(std::get<double>(value)));
}

std::int64_t Number::ceiling() const
{
    if (const auto *const integer = std::get_if<std::int64_t>(&value))
        return *integer;
    return nearestWithin64Bits(std::ceil(std::get<double>(value)));
}

std::int64_t Number::floor() const
{
    if (const auto *const integer = std::get_if<std::int64_t>(&value))
        return *integer;
    return nearestWithin64Bits(std::floor(std::get<double>(value)));
}

bool operator<(const Number &left, const Number &right)
{
    const auto *const leftInteger = std::get_if<std::int64_t>(&left.value);
    const auto *const rightInteger = std::get_if<std::int64_t>(&right.value);
    if (leftInteger != nullptr && rightInteger != nullptr)
        return *leftInteger < *rightInteger;
    return left.real() < right.real();
}

std::string Number::text() const
{
    if (std::isnan(real()))
        return "nan"; // whose sign means nothing
    std::array<char, 32> buffer;
    const auto write = [&buffer](auto number) {
        return std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    };
    return std::string{buffer.data(), std::visit(write, value)};
}

} // namespace GenApi_3_2_TVN
