// SPDX-License-Identifier: MIT
// What a run asks the person before the terminal.
#pragma once

#include "Job.h"
#include "Secrets.h"

namespace fleet {

/// Asks for the secret of \p camera without echo, a new one twice until both are the same. Nothing where nobody can be
/// asked, or nothing was typed.
std::optional<Secret> askForSecret(const Camera &camera, Secrets::Kind kind);

/// Tells each camera of \p jobs that is to be reset, and has its serial number typed, or its identifier where it has none.
/// Where another text was typed, or there is no terminal, the job is refused.
/// \return whether all are confirmed
/// \throws Interrupted
bool confirmResets(Jobs &jobs);

} // namespace fleet
