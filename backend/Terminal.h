// SPDX-License-Identifier: MIT
// What the dialogue must know of the terminal that it may run on. Each platform has a source of its own.
#pragma once

#include <cstdio>
#include <string_view>

namespace console {

/// Whether \p stream leads to a terminal, which acts on control bytes.
bool isTerminal(std::FILE *stream);

/// Waits for a line to be typed, if standard input is a terminal that is read line by line; any other input is not
/// waited for.
/// \return false if meanwhile the reader of standard output has left, so that nobody can see the question
bool waitForInput();

/// What belongs to the end of a line of input before the line feed: a carriage return on Windows, where input is read
/// byte by byte as it stands.
extern const std::string_view lineEndPrefix;

/// Takes a message for standard output where a file of ours stands in for a console that is not there, on Windows.
/// \return false if there is none: it is for standard output
bool writeToLog(std::string_view text);

} // namespace console
