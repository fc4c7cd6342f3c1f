// SPDX-License-Identifier: MIT
#include "Survey.h"

#include "Identity.h"
#include "Interruption.h"
#include "Look.h"
#include "Progress.h"
#include "ShownName.h"

namespace fleet {

namespace {

void lookIntoAll(std::vector<Camera> &cameras, const std::vector<std::size_t> &chosen, bool isQuiet)
{
    Progress progress(chosen.size(), isQuiet);
    for (std::size_t i = 0; i < chosen.size() && !platform::isInterrupted(); ++i) {
        progress.show(i, nameOf(cameras[chosen[i]]));
        lookInto(cameras[chosen[i]]);
    }
}

} // namespace

Survey survey(Tree &tree, const Request &request)
{
    std::vector<Camera> &cameras = tree.cameras();
    Survey survey;
    survey.unmatched = unmatchedValues(request.selection, cameras);
    const std::vector<std::size_t> chosen = chooseByIdentity(request.selection, cameras);
    if (!request.quick)
        lookIntoAll(cameras, chosen, request.quiet);
    markDuplicates(cameras);
    for (const std::size_t place : chosen) {
        if (!request.selection.needsLook() || passesLook(request.selection, cameras[place]))
            survey.cameras.push_back(&cameras[place]);
    }
    return survey;
}

} // namespace fleet
