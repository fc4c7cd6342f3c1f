// SPDX-License-Identifier: MIT
// Numbers of up to 8 bytes between a register's bytes and a machine word.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace GenApi_3_2_TVN {

inline constexpr std::size_t wordLength = 8;

inline std::uint64_t wordOf(std::span<const std::uint8_t> bytes, bool isBigEndian)
{
    std::uint64_t word = 0;
    for (std::size_t place = 0; place < bytes.size(); ++place)
        word = (word << 8) | bytes[isBigEndian ? place : bytes.size() - 1 - place];
    return word;
}

inline void putWord(std::uint64_t word, bool isBigEndian, std::span<std::uint8_t> bytes)
{
    const std::size_t count = std::min(bytes.size(), wordLength); // or GCC 12 sees writes behind them
    for (std::size_t place = 0; place < count; ++place)
        bytes[isBigEndian ? bytes.size() - 1 - place : place] =
            static_cast<std::uint8_t>(word >> (8 * place));
}

} // namespace GenApi_3_2_TVN
