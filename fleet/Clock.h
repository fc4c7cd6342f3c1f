// SPDX-License-Identifier: MIT
// The time and the names that go into every record of a run.
#pragma once

#include <QString>

namespace fleet {

/// Now, in UTC, as ISO 8601 with milliseconds: "2026-01-31T08:15:00.250Z".
QString utcNow();

/// A new identifier of a run: its time and a random part, "20260131T081500Z-1f3a9c".
QString newRunId();

/// The name of this PC; empty where the system does not tell.
QString hostName();

} // namespace fleet
