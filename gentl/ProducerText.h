// SPDX-License-Identifier: MIT
// How the texts that a producer writes into a buffer end.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

namespace GenICam_Interfaces {

/// The bytes before the first zero, or all \p size of them: a producer may have left no room for a zero.
[[nodiscard]] inline std::string producerText(const char *buffer, std::size_t size)
{
    return {buffer, std::find(buffer, buffer + size, '\0')};
}

} // namespace GenICam_Interfaces
