// SPDX-License-Identifier: MIT
// Writing through to the disk. Each platform has a source of its own.
#pragma once

namespace fleet::platform {

/// Returns when all that was written to the open file \p descriptor is on the disk.
/// \return false where the system refused
bool syncFile(int descriptor);

} // namespace fleet::platform
