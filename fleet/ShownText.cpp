// SPDX-License-Identifier: MIT
#include "ShownText.h"

#include "VisibleText.h"

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

// They turn the order of what stands on a line, end the line, or are not seen at all.
bool isHiddenControl(utf8proc_int32_t codepoint)
{
    const utf8proc_category_t category = utf8proc_category(codepoint); // none for a negative one
    return category == UTF8PROC_CATEGORY_CF || category == UTF8PROC_CATEGORY_ZL ||
           category == UTF8PROC_CATEGORY_ZP;
}

int widthOf(const Character &character)
{
    return character.codepoint < 0 ? 1 : utf8proc_charwidth(character.codepoint);
}

} // namespace

std::string shownText(std::string_view bytes)
{
    const std::string visible = console::visibleText(bytes);
    std::string shown;
    for (std::string_view rest = visible; !rest.empty();) {
        const Character character = firstOf(rest);
        const std::string_view piece = rest.substr(0, character.length);
        rest.remove_prefix(character.length);
        if (!isHiddenControl(character.codepoint)) {
            shown += piece;
            continue;
        }
        for (const char byte : piece) // by itself none of them is UTF-8
            shown += console::visibleText({&byte, 1});
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
