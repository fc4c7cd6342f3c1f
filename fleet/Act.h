// SPDX-License-Identifier: MIT
// Camera by camera: opens each once with control access, does what the run is about, and closes it.
#pragma once

#include "Job.h"
#include "Request.h"
#include "Tree.h"

#include <functional>

namespace fleet {

/// What stands around the work on one camera.
struct ActHooks
{
    std::function<void(const Job &)> begins; ///< it is the next one; nothing has been written
    /// It is open and was read, nothing has been written. What is returned is why it stays so.
    std::function<std::optional<Reason>(Job &, bool hasTwin)> opened;
    std::function<void(Job &)> willWrite; ///< it is open. May throw: then nothing is written
    std::function<void(Job &)> finished;  ///< it has its outcome, and is closed
};

/// Gives each job that has none its outcome. Held cameras wait together at the end, 5 s at most, and are opened when they
/// become free. After an interruption the camera in hand is finished, and the others are not reached.
void actOn(Jobs &jobs, const Request &request, Tree &tree, const ActHooks &hooks);

} // namespace fleet
