// SPDX-License-Identifier: MIT
#include "VisibleText.h"

#include <algorithm>
#include <cstddef>

namespace {

// What may follow a lead byte in UTF-8: so many bytes in all, the second one within these bounds, which keep out
// overlong forms, surrogates and what is above U+10FFFF. Of two bytes, C2 80 to C2 9F are the C1 controls.
struct Sequence
{
    unsigned char firstLead;
    unsigned char lastLead;
    unsigned char length;
    unsigned char leastSecond;
    unsigned char greatestSecond;
};
constexpr Sequence sequences[] = {
    {0xc2, 0xc2, 2, 0xa0, 0xbf}, {0xc3, 0xdf, 2, 0x80, 0xbf}, {0xe0, 0xe0, 3, 0xa0, 0xbf},
    {0xe1, 0xec, 3, 0x80, 0xbf}, {0xed, 0xed, 3, 0x80, 0x9f}, {0xee, 0xef, 3, 0x80, 0xbf},
    {0xf0, 0xf0, 4, 0x90, 0xbf}, {0xf1, 0xf3, 4, 0x80, 0xbf}, {0xf4, 0xf4, 4, 0x80, 0x8f},
};

// The bytes of the character at the start of text, which isn't empty; 0 if its first byte can't be shown.
std::size_t visibleLength(std::string_view text)
{
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    if (byte(0) < 0x80)
        return byte(0) >= 0x20 && byte(0) != 0x7f ? 1 : 0;
    const auto *const found = std::ranges::find_if(
        sequences, [&](const Sequence &s) { return byte(0) >= s.firstLead && byte(0) <= s.lastLead; });
    if (found == std::end(sequences) || text.size() < found->length)
        return 0;
    if (byte(1) < found->leastSecond || byte(1) > found->greatestSecond)
        return 0;
    for (std::size_t at = 2; at < found->length; ++at) {
        if ((byte(at) & 0xc0) != 0x80)
            return 0;
    }
    return found->length;
}

} // namespace

std::string console::visibleText(std::string_view text)
{
    constexpr const char *digits = "0123456789abcdef";
    std::string visible;
    while (!text.empty()) {
        const std::size_t length = visibleLength(text);
        if (length > 0) {
            visible += text.substr(0, length);
        } else {
            const auto byte = static_cast<unsigned char>(text[0]);
            visible += {'\\', 'x', digits[byte >> 4], digits[byte & 0xf]};
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return visible;
}
