// SPDX-License-Identifier: MIT
// Files that hold secrets. One that others can read is refused: whoever made it so by mistake learns it at once.
#pragma once

#include "PasswordsFile.h"
#include "Secret.h"

#include <string>

namespace fleet {

/// Reads the first line of \p name; "-" is standard input, of which the rest is left for others.
/// \throws UsageError  the file cannot be read, can be read by group or others, or belongs to somebody else than the user
///     or root (told with the command that mends it); or its first line is missing, empty or longer than 4096 bytes
Secret readSecretFile(const std::string &name);

/// Reads all of \p name, a file of passwords by serial number; "-" is standard input.
/// \throws UsageError  as readSecretFile for the file, as PasswordsFile::read for its lines
PasswordsFile readPasswordsFile(const std::string &name, bool needsNew);

} // namespace fleet
