// SPDX-License-Identifier: MIT
// From the options to the cameras that a run is about, with a look into those that need one.
#pragma once

#include "Job.h"
#include "Request.h"
#include "Status.h"
#include "Tree.h"

#include <functional>
#include <stdexcept>
#include <string>

namespace fleet {

/// No camera is there, or none that was chosen. The text is a sentence.
class NothingChosen : public std::runtime_error
{
public:
    explicit NothingChosen(const std::string &sentence, Status status = Status::NoCamera)
        : std::runtime_error(sentence), status_(status)
    {}

    Status status() const noexcept { return status_; }

private:
    Status status_;
};

/// The jobs of an action, in the order of the tree, those that are another's double left out. Opens, read-only and once,
/// the cameras whose state, MAC address or identity decides.
/// \param tick  called before each look, for progress
/// \throws NothingChosen
Jobs chooseJobs(Tree &tree, const Request &request, const std::function<void(const Camera &)> &tick);

} // namespace fleet
