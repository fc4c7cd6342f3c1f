// SPDX-License-Identifier: MIT
// The buffer into which a producer writes a text or an identifier: of a fixed size, on the stack, and read no
// further than its end, also when the producer forgot the terminating zero.
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>

class TextBuffer
{
    static constexpr std::size_t blockSize = 16;
    static constexpr std::size_t blockCount = 16;

public:
    char *data() { return bytes.data(); }

    /// In bytes, the terminating zero included.
    static constexpr std::size_t size() { return blockSize * blockCount; }

    /// In blocks: of one fill of this length compilers make a string instruction, which takes longer than all else
    /// that a quiet pass does for a camera.
    void clear()
    {
        [this]<std::size_t... block>(std::index_sequence<block...>)
        {
            (std::memset(bytes.data() + block * blockSize, 0, blockSize), ...);
        }
        (std::make_index_sequence<blockCount>());
    }

    /// The bytes up to the first zero; valid until the buffer changes.
    std::string_view text() const
    {
        const std::string_view whole(bytes.data(), bytes.size());
        return whole.substr(0, whole.find('\0'));
    }

    explicit operator std::string_view() const { return text(); }

    /// Whether the text is \p other, which holds no zero byte.
    bool operator==(std::string_view other) const
    {
        const std::string_view whole(bytes.data(), bytes.size());
        return whole.starts_with(other) && (other.size() == size() || bytes[other.size()] == '\0');
    }

private:
    // Aligned, since a producer may write a number into it.
    alignas(std::max_align_t) std::array<char, blockSize * blockCount> bytes{};
};
