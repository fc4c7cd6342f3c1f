// SPDX-License-Identifier: MIT
// From the options to the cameras that a run is about, with a look into those that need one.
#pragma once

#include "Job.h"
#include "Request.h"
#include "Tree.h"

#include <functional>
#include <stdexcept>

namespace fleet {

/// No camera is there, or none that was chosen: status 4. The text is a sentence.
class NothingChosen : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// The jobs of an action, in the order of the tree, those that are another's double left out. Opens, read-only and once,
/// the cameras whose state, MAC address or identity decides.
/// \param tick  called before each look, for progress
/// \throws NothingChosen
Jobs chooseJobs(Tree &tree, const Request &request, const std::function<void(const Camera &)> &tick);

} // namespace fleet
