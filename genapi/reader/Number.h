// SPDX-License-Identifier: MIT
// What nodes hand one another: an integer or a float. Any kind may refer to any other, so each use says which of
// the two it wants and how a fraction or a large value becomes an integer.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <variant>

namespace GenApi_3_2_TVN {

class Number
{
public:
    Number(std::int64_t integer) : value{integer} {}
    Number(double real) : value{real} {}

    double real() const;
    bool isZero() const;

    // Empty when the value lies outside 64 bits or is no number at all.
    std::optional<std::int64_t> truncated() const; ///< cut toward zero
    std::optional<std::int64_t> rounded() const;   ///< to the nearest, halves away from zero

    // The ends of a range, as far as 64 bits reach.
    std::int64_t ceiling() const;
    std::int64_t floor() const;

    /// Exact between two integers.
    friend bool operator<(const Number &left, const Number &right);

    /// In decimal, a float with as many digits as tell it from its neighbours.
    std::string text() const;

private:
    std::variant<std::int64_t, double> value;
};

/// The double \p whole as an integer; empty when it has a fraction, lies outside 64 bits or is no number.
std::optional<std::int64_t> wholeNumber(double whole);

// The range of nodes that state none.
template <class T>
inline constexpr T lowestOf = std::numeric_limits<T>::lowest();
template <class T>
inline constexpr T highestOf = std::numeric_limits<T>::max();

} // namespace GenApi_3_2_TVN
