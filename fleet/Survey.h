// SPDX-License-Identifier: MIT
// What runs that write to no camera, list and check, find out of the cameras that the options choose.
#pragma once

#include "Request.h"
#include "Tree.h"

#include <string>
#include <vector>

namespace fleet {

struct Survey
{
    std::vector<const Camera *> cameras; ///< the chosen ones, of the tree, in its order; doubles are marked
    std::vector<std::string> missing;    ///< who is named and not there, a sentence each
};

/// Opens each camera that the options may mean, read-only and once, unless the request is for a quick list, and waits for
/// none. Shows progress. An interruption ends it early: the rest is unknown.
Survey survey(Tree &tree, const Request &request);

} // namespace fleet
