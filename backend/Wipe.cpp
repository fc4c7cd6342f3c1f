// SPDX-License-Identifier: MIT
#include "Wipe.h"

#include <cstddef>

namespace {

// Through a volatile pointer, since a plain fill of memory that is given up behind it may be left out.
template <class Bytes>
void overwrite(Bytes &bytes) noexcept
{
    bytes.resize(bytes.capacity()); // within the capacity nothing moves, and nothing throws
    volatile char *const begin = bytes.data();
    for (std::size_t i = 0; i < bytes.size(); ++i)
        begin[i] = '\0';
    bytes.clear();
}

} // namespace

void wipe(std::string &text) noexcept
{
    overwrite(text);
}

void wipe(std::vector<char> &bytes) noexcept
{
    overwrite(bytes);
}
