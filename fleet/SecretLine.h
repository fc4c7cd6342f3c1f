// SPDX-License-Identifier: MIT
// One line of an input that may hold secrets.
#pragma once

#include <cstddef>
#include <istream>
#include <string>

namespace fleet {

/// More lines than cameras that one PC could look after: a file with more is a mistake, or has no end.
inline constexpr std::size_t mostLines = 100'000;

/// Reads up to the next line end, which is taken and dropped, a carriage return before it too, and so is a byte-order mark
/// at the beginning of the input.
/// \param line  empty, or filled by this function before. Its storage stays the same, and the caller wipes it in the end
/// \param longest  bytes; of a longer line one more is kept, so that its size tells, and the rest is left unread
/// \param isFirst  the line is the first one of its input
/// \return false at the end of the input, when nothing was left to read
bool readSecretLine(std::istream &input, std::string &line, std::size_t longest, bool isFirst);

} // namespace fleet
