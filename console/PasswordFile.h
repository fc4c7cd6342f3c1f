// SPDX-License-Identifier: MIT
// Passwords from files and from standard input, the way past the command line, which other users of the
// machine can read.
#pragma once

#include <cstddef>
#include <string>

/// The longest line that is taken as a password, in bytes. Far above what cameras hold; it keeps a file named
/// by mistake, or a device without an end, out of memory.
inline constexpr std::size_t maxPasswordLineBytes = 4096;

/// The first line of a file, without its line end. Bytes stay as they are, blanks included, but a byte-order mark
/// of UTF-8 at the start and one carriage return at the end go, since editors on Windows write them.
/// \param name  path of the file; "-" takes the next line of standard input (std::cin) and leaves what
///     follows to the next reader
/// \throws UsageError  the file can't be read, has no line, or its first line is empty, too long or holds a
///     zero byte (text in a wide encoding)
std::string readPasswordFile(const std::string &name);
