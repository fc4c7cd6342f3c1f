// SPDX-License-Identifier: MIT
// Standard output for results, standard error for all else.
#pragma once

#include <string>
#include <string_view>

namespace fleet {

/// Writes \p text to standard output at once. A reader that has left is ignored: it ends no run that writes.
/// \return false once nobody reads any more
bool writeResult(std::string_view text);

/// Whether results were lost for another cause than a reader that has left, such as a full disk.
bool hasLostResults();

/// A sentence on standard error, with the program's name before it. Control characters are made visible.
void complain(const std::string &sentence);

} // namespace fleet
