// SPDX-License-Identifier: MIT
// Texts from outside made harmless for a terminal. A line feed in a camera's name would forge a line of ours, and an
// escape sequence could hide one.
#pragma once

#include <string>
#include <string_view>

namespace console {

/// \p text with each byte that a terminal may act on as \xNN: control bytes, line ends and DEL included, the C1
/// controls (U+0080 to U+009F), and bytes that are no UTF-8. All else stays, backslashes too, so that doing it twice
/// changes nothing.
std::string visibleText(std::string_view text);

} // namespace console
