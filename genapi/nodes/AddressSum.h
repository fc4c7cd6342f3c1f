// SPDX-License-Identifier: MIT
// The sum of the parts of a register's address, whose order means nothing.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>

namespace GenApi_3_2_TVN {

/// Adds up what is positive and what is negative apart, so that it may be negative on the way. Each of the two
/// has to fit 64 bits.
class AddressSum
{
public:
    void add(std::int64_t part)
    {
        if (part < 0)
            addMagnitude(below, 0 - static_cast<std::uint64_t>(part));
        else
            addMagnitude(above, static_cast<std::uint64_t>(part));
    }

    void addUnsigned(std::uint64_t part) { addMagnitude(above, part); }

    void addProduct(std::int64_t left, std::int64_t right)
    {
        const std::uint64_t leftMagnitude = magnitude(left);
        const std::uint64_t rightMagnitude = magnitude(right);
        if (leftMagnitude != 0 && rightMagnitude > std::numeric_limits<std::uint64_t>::max() / leftMagnitude)
            hasOverflown = true;
        else
            addMagnitude((left < 0) == (right < 0) ? above : below, leftMagnitude * rightMagnitude);
    }

    /// Empty when it is negative or passes 64 bits.
    std::optional<std::uint64_t> result() const
    {
        return hasOverflown || below > above ? std::nullopt : std::optional{above - below};
    }

private:
    static std::uint64_t magnitude(std::int64_t value)
    {
        return value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
    }

    void addMagnitude(std::uint64_t &sum, std::uint64_t part)
    {
        hasOverflown = hasOverflown || part > std::numeric_limits<std::uint64_t>::max() - sum;
        sum += part;
    }

    std::uint64_t above = 0;
    std::uint64_t below = 0;
    bool hasOverflown = false;
};

} // namespace GenApi_3_2_TVN
