// SPDX-License-Identifier: MIT
// A description out of a zip archive in memory.
#pragma once

#include <string>
#include <string_view>

namespace GenApi_3_2_TVN {

/// Unpacks the description: the one file whose name ends in ".xml" (in any case of letters), or the only file
/// of the archive. Folders do not count, nor what macOS packs beside each file ("__MACOSX/._camera.xml"), nor zeros
/// behind the archive.
/// \throws InvalidArgumentException  damaged, truncated or encrypted, no such file, several of them, or one
///         that unpacks to more than largestDescription
std::string unpackDescription(std::string_view archive);

} // namespace GenApi_3_2_TVN
