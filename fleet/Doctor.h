// SPDX-License-Identifier: MIT
// Why something is not there: the search path, the producers, the cameras out of reach, each with the next step.
#pragma once

#include "Status.h"

#include <string>
#include <vector>

namespace fleet {

/// Looks at everything, opens no camera, and prints what it found.
/// \param libraries  producer files to look at instead of those that the environment names
/// \return Done where cameras were found, NoCamera where none was, Unexpected where all producers failed
Status runDoctor(const std::vector<std::string> &libraries, bool asJson);

} // namespace fleet
