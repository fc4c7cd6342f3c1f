// SPDX-License-Identifier: MIT
// The layer's one way to throw an exception of its own.
#pragma once

#include "GenericException.h"

#include <cstddef>
#include <string>

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

/// \param sourceFileName  a name of the layer, such as "GenApi/Node"
template <class Exception>
[[noreturn]] void raise(const char *sourceFileName, const std::string &text, unsigned line = __builtin_LINE())
{
    throw GenICam_3_2_TVN::ExceptionReporter<Exception>(sourceFileName, line)
        .Report("%s", printable(text).c_str());
}

} // namespace GenApi_3_2_TVN
