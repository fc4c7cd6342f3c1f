// SPDX-License-Identifier: MIT
#include "ShownText.h"

#include <utf8proc.h>

#include <cstddef>

namespace fleet {

namespace {

/// One character at the beginning of a text, or a byte that begins none.
struct Character
{
    std::size_t length = 1;          // bytes
    utf8proc_int32_t codepoint = -1; // -1: no UTF-8
};

Character firstOf(std::string_view text)
{
    utf8proc_int32_t codepoint = -1;
    const utf8proc_ssize_t length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t *>(text.data()),
                                                     static_cast<utf8proc_ssize_t>(text.size()), &codepoint);
    if (length <= 0)
        return {};
    return {static_cast<std::size_t>(length), codepoint};
}

// Unicode's property Bidi_Control: they turn the order of what stands on a line.
bool isBidirectionalControl(utf8proc_int32_t codepoint)
{
    return codepoint == 0x061c || codepoint == 0x200e || codepoint == 0x200f ||
           (codepoint >= 0x202a && codepoint <= 0x202e) || (codepoint >= 0x2066 && codepoint <= 0x2069);
}

bool isHarmless(utf8proc_int32_t codepoint)
{
    return codepoint >= 0 && utf8proc_category(codepoint) != UTF8PROC_CATEGORY_CC &&
           !isBidirectionalControl(codepoint);
}

int widthOf(const Character &character)
{
    return character.codepoint < 0 ? 1 : utf8proc_charwidth(character.codepoint);
}

void appendEscaped(std::string &shown, std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        shown += "\\x";
        shown += digits[value >> 4U];
        shown += digits[value & 0xfU];
    }
}

} // namespace

std::string shownText(std::string_view bytes)
{
    std::string shown;
    while (!bytes.empty()) {
        const Character character = firstOf(bytes);
        const std::string_view piece = bytes.substr(0, character.length);
        if (isHarmless(character.codepoint))
            shown += piece;
        else
            appendEscaped(shown, piece);
        bytes.remove_prefix(character.length);
    }
    return shown;
}

int columnsOf(std::string_view text)
{
    int columns = 0;
    while (!text.empty()) {
        const Character character = firstOf(text);
        columns += widthOf(character);
        text.remove_prefix(character.length);
    }
    return columns;
}

std::string fittedTo(std::string_view text, int columns)
{
    if (columnsOf(text) <= columns)
        return std::string(text);
    std::string fitted;
    for (int left = columns - 1;;) { // one for the ellipsis
        const Character character = firstOf(text);
        left -= widthOf(character);
        if (left < 0)
            return fitted + "…";
        fitted += text.substr(0, character.length);
        text.remove_prefix(character.length);
    }
}

} // namespace fleet
