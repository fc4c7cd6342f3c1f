// SPDX-License-Identifier: MIT
#include "Survey.h"

#include "Identity.h"
#include "Interruption.h"
#include "Look.h"
#include "MacAddress.h"
#include "Progress.h"
#include "ShownName.h"

#include <algorithm>
#include <optional>

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

std::vector<std::string> missingOnes(const Selection &selection, const std::vector<Camera> &cameras)
{
    std::vector<std::string> sentences;
    for (const std::string &value : unmatchedValues(selection, cameras))
        sentences.push_back("No camera matches " + value + '.');
    for (const std::uint64_t mac : selection.macs) {
        if (std::ranges::find(cameras, std::optional(mac), &Camera::mac) == cameras.end())
            sentences.push_back("No camera that can be opened has the MAC address " + formatMacAddress(mac) +
                                '.');
    }
    return sentences;
}

} // namespace

Survey survey(Tree &tree, const Request &request)
{
    std::vector<Camera> &cameras = tree.cameras();
    Survey survey;
    const std::vector<std::size_t> chosen = chooseByIdentity(request.selection, cameras);
    if (!request.quick)
        lookIntoAll(cameras, chosen, request.quiet);
    markDuplicates(cameras);
    if (!cameras.empty() && !platform::isInterrupted())
        survey.missing = missingOnes(request.selection, cameras);
    for (const std::size_t place : chosen) {
        if (!request.selection.needsLook() || passesLook(request.selection, cameras[place]))
            survey.cameras.push_back(&cameras[place]);
    }
    return survey;
}

} // namespace fleet
