// SPDX-License-Identifier: MIT
// A look at a producer's file before the loader gets it. The loader waits for ever to open a named pipe, and trusts the
// headers of what it maps: a file that ends too early ends the process.
#pragma once

#include <string>

namespace GenICam_Interfaces::platform {

/// \return what keeps the file from being loaded, naming it: it is no regular file, links followed, or it is
///     truncated. Empty when the loader may have it, also for a file that can't be read or is no module at all:
///     the loader has words of its own for those.
std::string moduleFileFault(const std::string &path);

} // namespace GenICam_Interfaces::platform
