// SPDX-License-Identifier: MIT
#include "List.h"

#include "Interruption.h"
#include "Output.h"
#include "Survey.h"

namespace fleet {

Status list(const Request &request, Report &report)
{
    Tree tree(producerFiles(request.libraries));
    tellProducerFailures(tree);
    if (tree.cameras().empty())
        complain(noCameraSentence);
    const Survey found = survey(tree, request);
    for (const std::string &sentence : found.missing)
        complain(sentence);
    std::vector<Camera> shown;
    for (const Camera *const camera : found.cameras)
        shown.push_back(*camera);
    report.list(shown, tree.producers());
    if (platform::isInterrupted())
        return Status::Interrupted;
    if (!found.missing.empty())
        return Status::NoCamera;
    return shown.empty() || tree.hasFailure() ? statusWithoutCamera(tree) : Status::Done;
}

} // namespace fleet
