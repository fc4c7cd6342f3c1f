// SPDX-License-Identifier: MIT
// The layer's one way to throw an exception of its own.
#pragma once

#include "GenericException.h"
#include "Limits.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace GenApi_3_2_TVN {

/// \a text with every byte of a control character replaced by "?": names and values come from the network, and
/// messages end on terminals. In UTF-8 those of the upper half are 0xC2 and a byte from 0x80 to 0x9F.
inline std::string printable(std::string text)
{
    unsigned before = 0;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const unsigned byte = static_cast<unsigned char>(text[place]);
        if (byte < 0x20 || byte == 0x7f)
            text[place] = '?';
        if (before == 0xc2 && byte >= 0x80 && byte < 0xa0)
            text.replace(place - 1, 2, 2, '?');
        before = byte;
    }
    return text;
}

/// \a text cut to \p length bytes, between characters of UTF-8, with "..." behind the cut.
inline std::string shortened(std::string_view text, std::size_t length)
{
    if (text.size() <= length)
        return std::string{text};
    const auto isInside = [&](std::size_t place) {
        return (static_cast<unsigned char>(text[place]) & 0xC0U) == 0x80U;
    };
    while (length > 0 && isInside(length))
        --length;
    return std::string{text.substr(0, length)} + "...";
}

/// A name or a text of the description as messages show it.
inline std::string shown(std::string_view text)
{
    return shortened(text, limits::shownNameLength);
}

/// \param sourceFileName  a name of the layer, such as "GenApi/Node"
template <class Exception>
[[noreturn]] void raise(const char *sourceFileName, const std::string &text, unsigned line = __builtin_LINE())
{
    const std::string message = printable(shortened(text, limits::messageLength));
    throw Exception(message.c_str(), sourceFileName, line, Exception::typeName);
}

} // namespace GenApi_3_2_TVN
