// SPDX-License-Identifier: MIT
// What a run of changes that was ended has left, as jobs of the next one.
#pragma once

#include "Job.h"
#include "Journal.h"
#include "Tree.h"

#include <deque>
#include <vector>

namespace fleet {

struct Resumption
{
    Jobs jobs;
    std::deque<Camera> missing; ///< cameras of the journal that are not there, to which their jobs point
    std::vector<QString> runs;  ///< whose cameras these are
};

/// The cameras that have an intent and no outcome, on which the new password is tried first, and those that were not
/// reached. Where nothing is left, that is told. Each that is there is looked into once; of one that is not there, the job has its outcome already.
Resumption resumeJobs(Tree &tree, const Journal &journal);

} // namespace fleet
