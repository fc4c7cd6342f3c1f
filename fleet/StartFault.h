// SPDX-License-Identifier: MIT
// Whether a process that was started runs. Qt 5.15, where it has process file descriptors, takes a fork that failed for a
// start: kill(), and the destructor of what seems to run, then end every process of the user, since the identifier is -1.
#pragma once

#include <string>

class QProcess;

namespace fleet {

/// Waits up to \p patienceMs milliseconds until \p process, on which start() was called, runs. Afterwards it may be killed
/// and destroyed without harm to others.
/// \returns why it does not run, in words without a full stop; empty where it does
std::string startFault(QProcess &process, int patienceMs);

} // namespace fleet
