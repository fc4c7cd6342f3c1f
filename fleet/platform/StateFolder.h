// SPDX-License-Identifier: MIT
// Where a user's programs keep what must outlive them. Each platform has a source of its own.
#pragma once

#include <QString>

namespace fleet::platform {

/// $XDG_STATE_HOME where that is an absolute path, else ~/.local/state; on Windows %LOCALAPPDATA%, else what the system
/// knows as that. Without a separator at its end; empty where the system tells no home.
QString stateFolder();

} // namespace fleet::platform
