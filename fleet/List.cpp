// SPDX-License-Identifier: MIT
#include "List.h"

#include "Identity.h"
#include "Interruption.h"
#include "Look.h"
#include "Output.h"
#include "Progress.h"
#include "ShownName.h"
#include "Tree.h"

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

Status list(const Request &request, Report &report)
{
    Tree tree(producerFiles(request.libraries));
    tellProducerFailures(tree);
    std::vector<Camera> &cameras = tree.cameras();
    if (cameras.empty())
        complain(noCameraSentence);
    const std::vector<std::string> unmatched = unmatchedValues(request.selection, cameras);
    for (const std::string &value : unmatched)
        complain("No camera matches " + value + '.');
    const std::vector<std::size_t> chosen = chooseByIdentity(request.selection, cameras);
    if (!request.quick)
        lookIntoAll(cameras, chosen, request.quiet);
    markDuplicates(cameras);

    std::vector<Camera> shown;
    for (const std::size_t place : chosen) {
        if (!request.selection.needsLook() || passesLook(request.selection, cameras[place]))
            shown.push_back(cameras[place]);
    }
    report.list(shown, tree.producers());
    if (platform::isInterrupted())
        return Status::Interrupted;
    if (!cameras.empty() && !unmatched.empty())
        return Status::NoCamera;
    return shown.empty() || tree.hasFailure() ? statusWithoutCamera(tree) : Status::Done;
}

} // namespace fleet
