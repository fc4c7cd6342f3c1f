// SPDX-License-Identifier: MIT
// Who can read a file that holds secrets. Each platform has a source of its own.
#pragma once

#include <string>

namespace fleet::platform {

/// Why \p path does not keep a secret, as a sentence with the command that mends it; empty where it does, or where it
/// cannot be looked at. Links are followed.
std::string privacyFault(const std::string &path);

} // namespace fleet::platform
