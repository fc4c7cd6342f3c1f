// SPDX-License-Identifier: MIT
// Why something is not there: the search path, the producers, the cameras out of reach, each with the next step.
#pragma once

#include "Request.h"
#include "Status.h"

namespace fleet {

/// Looks at all places and producers, and at the cameras that \p request chooses by what the producers tell; opens no
/// camera, and prints what it found.
/// \return Done where they were found, NoCamera where one was not or none was, Unexpected where all producers failed
/// \throws Interrupted
Status runDoctor(const Request &request);

} // namespace fleet
