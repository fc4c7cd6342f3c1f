// SPDX-License-Identifier: MIT
// What the dialogue must know of the terminal that it may run on. Each platform has a source of its own.
#pragma once

#include <cstdio>

namespace console {

/// Whether \p stream leads to a terminal, which acts on control bytes.
bool isTerminal(std::FILE *stream);

/// Waits for a line to be typed, if standard input is a terminal that is read line by line; any other input is not
/// waited for.
/// \return false if meanwhile the reader of standard output has left, so that nobody can see the question
bool waitForInput();

} // namespace console
