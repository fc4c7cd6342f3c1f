// SPDX-License-Identifier: MIT
// Chance that is the same everywhere: the distributions of the standard library differ between libraries, its
// engines do not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <sstream>
#include <string>

class Random
{
public:
    explicit Random(std::uint64_t seed) : engine{seed} {}

    std::uint64_t bits() { return engine(); }
    /// 0 to \p count - 1.
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(engine() % count); }
    bool chance(std::size_t percent) { return below(100) < percent; }
    std::int64_t between(std::int64_t low, std::int64_t high)
    {
        return low + static_cast<std::int64_t>(bits() % (static_cast<std::uint64_t>(high - low) + 1));
    }
    template <class Range>
    const auto &pick(const Range &range)
    {
        return range[below(range.size())];
    }
    template <class Item>
    Item pick(std::initializer_list<Item> items)
    {
        return items.begin()[below(items.size())];
    }
    /// Decimal or hexadecimal.
    std::string notation(std::uint64_t number)
    {
        std::ostringstream text;
        if (chance(50))
            text << std::hex << std::uppercase << "0x";
        text << number;
        return text.str();
    }

private:
    std::mt19937_64 engine;
};
