// SPDX-License-Identifier: MIT
// The exit status of a run, which is what most scripts look at.
#pragma once

#include "Outcome.h"

#include <vector>

namespace fleet {

enum class Status
{
    Done = 0,       // or nothing to do; a list was printed
    Unexpected = 1, // or a producer failed; or none was done and the reasons differ
    Usage = 2,      // or refused before anything was written
    DoneInPart = 3,
    NoCamera = 4,      // or none that was chosen
    AllHeld = 5,       // none done
    OtherRun = 6,      // is going on
    WrongPassword = 7, // for all; none done
    Interrupted = 130
};

/// How many chosen cameras ended how.
struct Summary
{
    int selected = 0;
    int done = 0;
    int unchanged = 0;
    int failed = 0; ///< those that were not proved too
    int refused = 0;
    Status status = Status::Done;
};

/// Counts \p outcomes, and takes the status from them; those that were skipped count for nothing.
/// \param producerFailed  a camera may be missing from what was chosen
Summary summarise(const std::vector<Outcome> &outcomes, bool producerFailed);

} // namespace fleet
