// SPDX-License-Identifier: MIT
#include "SecretLine.h"

#include <string_view>

namespace fleet {

bool readSecretLine(std::istream &input, std::string &line, std::size_t longest, bool isFirst)
{
    constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";
    line.clear();
    line.reserve(longest + 1 + byteOrderMark.size()); // growth would leave copies behind
    bool wasRead = false;
    for (char byte = 0; input.get(byte);) {
        wasRead = true;
        if (byte == '\n' || line.size() > longest + byteOrderMark.size())
            break;
        line += byte;
    }
    if (isFirst && line.starts_with(byteOrderMark))
        line.erase(0, byteOrderMark.size());
    if (line.ends_with('\r'))
        line.pop_back();
    if (line.size() > longest + 1)
        line.resize(longest + 1);
    return wasRead;
}

} // namespace fleet
