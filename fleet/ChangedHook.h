// SPDX-License-Identifier: MIT
// The user's command that learns of each change, such as one that tells a vault which password is in force.
#pragma once

#include "Job.h"

#include <QString>
#include <string>

namespace fleet {

/// Runs \p command as the commands for secrets are run, with one JSON line on its standard input: serial, mac, run, result,
/// in_force. Its output is dropped, its errors go to standard error.
/// \return why it failed, as a sentence; empty where it did not
std::string runChangedHook(const std::string &command, const Job &job, const QString &run);

} // namespace fleet
