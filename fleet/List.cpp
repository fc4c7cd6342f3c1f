// SPDX-License-Identifier: MIT
#include "List.h"

#include "Interruption.h"
#include "Output.h"
#include "Survey.h"

namespace fleet {

Status list(const Request &request, Report &report)
{
    Tree tree(producerFiles(request));
    tellProducerFailures(tree);
    if (tree.cameras().empty())
        complain("There is no camera. Run 'torvane doctor' to see why.");
    const Survey found = survey(tree, request);
    for (const std::string &value : found.unmatched)
        complain("No camera matches " + value + '.');
    std::vector<Camera> shown;
    for (const Camera *const camera : found.cameras)
        shown.push_back(*camera);
    report.list(shown, tree.producers());
    if (platform::isInterrupted())
        return Status::Interrupted;
    if (tree.hasFailure())
        return Status::Unexpected;
    return shown.empty() || !found.unmatched.empty() ? Status::NoCamera : Status::Done;
}

} // namespace fleet
