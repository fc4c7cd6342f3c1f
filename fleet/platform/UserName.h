// SPDX-License-Identifier: MIT
// Who runs the program, as the system knows it and not as the environment says. Each platform has a source of its own.
#pragma once

#include <QString>

namespace fleet::platform {

/// The login name of the process's user; where the system has none, the user's number. Empty where it tells neither.
QString userName();

} // namespace fleet::platform
