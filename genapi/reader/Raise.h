// SPDX-License-Identifier: MIT
// The layer's one way to throw an exception of its own.
#pragma once

#include "GenericException.h"

#include <string>

namespace GenApi_3_2_TVN {

/// \a text with every control character replaced by "?": names and values come from the network, and messages
/// end on terminals.
inline std::string printable(std::string text)
{
    for (char &byte : text) {
        if (static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f)
            byte = '?';
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
