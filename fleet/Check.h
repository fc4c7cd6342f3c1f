// SPDX-License-Identifier: MIT
// The check of a monitoring system: cameras are counted and held against rules. Nothing is written to a camera.
#pragma once

#include "CheckRules.h"
#include "Request.h"

namespace fleet {

/// Looks into the chosen cameras, writes the metrics file that \p request names, prints what monitoring reads, and returns
/// what its status is to be. No rule stands for "no camera on the factory password, else critical".
CheckState check(const Request &request);

} // namespace fleet
