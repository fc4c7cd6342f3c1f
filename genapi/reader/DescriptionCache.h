// SPDX-License-Identifier: MIT
// The descriptions in use in this process. A hundred cameras of one model cost one parse and one copy.
#pragma once

#include "Description.h"

#include <memory>
#include <string_view>

namespace GenApi_3_2_TVN {

/// The description made of these bytes: one that is in use, or a new one. Only equal bytes count as the same,
/// and nothing is kept beyond its last user. Safe on any threads at once; of two that load the same bytes
/// together both may parse, and get one description all the same.
/// \throws what Description throws
std::shared_ptr<const Description> sharedDescription(EContentType_t contentType, std::string_view source);

} // namespace GenApi_3_2_TVN
