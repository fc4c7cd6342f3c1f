// SPDX-License-Identifier: MIT
// The secret of a camera from a command of the user's.
#pragma once

#include "Secret.h"

#include <string>
#include <variant>

namespace fleet {

/// \return the first line that \p command, run for \p serial, prints; or why there is none, as a sentence
std::variant<Secret, std::string> runSecretCommand(const std::string &command, const std::string &serial);

} // namespace fleet
