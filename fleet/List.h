// SPDX-License-Identifier: MIT
// The run that writes to no camera: all that is known of each.
#pragma once

#include "Report.h"
#include "Request.h"
#include "Status.h"

namespace fleet {

/// Looks into the chosen cameras, unless the request is for a quick list, and reports them.
Status list(const Request &request, Report &report);

} // namespace fleet
