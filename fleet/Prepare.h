// SPDX-License-Identifier: MIT
// All that is decided about the chosen cameras before the first is written: which secrets they get, which of them are
// passed over, and why a run is refused. Refusals are told together, not one a run.
#pragma once

#include "Job.h"
#include "Journal.h"
#include "Request.h"
#include "Secrets.h"

#include <optional>
#include <vector>

namespace fleet {

/// Gives each job its secrets and rules, and an outcome where the camera is passed over or refused.
/// \param cameras  of the tree: who shares a serial number
/// \return whether any was refused: then nothing may be written
bool prepareJobs(Jobs &jobs, const Request &request, Secrets &secrets, const std::vector<Camera> &cameras,
                 const Journal &journal);

/// The same rules once more for a camera that is open now, and may say something else than before, or say it for the first
/// time: whether it is the one of the journal, and which old password it gets.
/// \param hasTwin  another camera bears its serial number
/// \return why it must not be written
std::optional<Reason> prepareOpened(Job &job, bool hasTwin, const Request &request, Secrets &secrets,
                                    const Journal &journal);

} // namespace fleet
