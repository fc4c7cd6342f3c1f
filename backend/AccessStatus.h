// SPDX-License-Identifier: MIT
// The words for GenTL's DEVICE_ACCESS_STATUS.
#pragma once

#include <cstdint>
#include <string>

/// The text for \p status, a DEVICE_ACCESS_STATUS; "Unimplemented item" for a value that GenTL does not
/// define.
std::string accessStatusName(std::int32_t status);
