// SPDX-License-Identifier: MIT
// Packs one file into a zip archive, stored and not compressed: all that a zipped description needs.
#pragma once

#include <string>
#include <string_view>

namespace simulator {

/// \param name  of the file within the archive; ASCII
/// \param content  below 4 GiB
std::string zipOf(std::string_view name, std::string_view content);

} // namespace simulator
