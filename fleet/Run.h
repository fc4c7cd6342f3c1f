// SPDX-License-Identifier: MIT
// One run, from the request to its exit status.
#pragma once

#include "Report.h"
#include "Request.h"
#include "Status.h"

#include <QString>

namespace fleet {

/// Thread: one. Prints results by \p report, and what concerns no single camera on standard error.
Status run(const Request &request, const QString &runId, Report &report);

} // namespace fleet
