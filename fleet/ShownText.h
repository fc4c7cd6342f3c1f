// SPDX-License-Identifier: MIT
// Texts of cameras and producers as they may be shown: on a terminal, in a table, in JSON. What stands in a camera's
// memory is anybody's: it must steer no terminal, forge no line and break no reader.
#pragma once

#include <string>
#include <string_view>

namespace fleet {

/// \p bytes as valid UTF-8 in which control characters (C0, DEL, C1), bidirectional controls and bytes that are no
/// UTF-8 stand as \xNN, a byte each. All else stays as it is. Thread: any.
std::string shownText(std::string_view bytes);

/// How many columns of a terminal \p text, valid UTF-8 without control characters, takes: two for a wide character, none
/// for a combining one.
int columnsOf(std::string_view text);

/// \p text, cut to \p columns where it is wider; an ellipsis then stands at its end.
std::string fittedTo(std::string_view text, int columns);

} // namespace fleet
