// SPDX-License-Identifier: MIT
// The buffer into which a producer writes a text or an identifier: of a fixed size, on the stack, and read no
// further than its end, also when the producer forgot the terminating zero.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

class TextBuffer
{
public:
    char *data() { return bytes.data(); }

    /// In bytes, the terminating zero included.
    static constexpr std::size_t size() { return 256; }

    void clear() { bytes.fill('\0'); }

    /// The bytes up to the first zero; valid until the buffer changes.
    std::string_view text() const
    {
        const std::string_view whole(bytes.data(), bytes.size());
        return whole.substr(0, whole.find('\0'));
    }

private:
    alignas(std::max_align_t) std::array<char, 256> bytes{}; // a producer may write a number into it
};
