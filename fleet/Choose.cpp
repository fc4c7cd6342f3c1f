// SPDX-License-Identifier: MIT
#include "Choose.h"

#include "Identity.h"
#include "Interrupted.h"
#include "Look.h"
#include "MacAddress.h"
#include "Output.h"
#include "ShownName.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

namespace fleet {

namespace {

void refuseUnmatched(const Selection &selection, const std::vector<Camera> &cameras)
{
    const std::vector<std::string> unmatched = unmatchedValues(selection, cameras);
    if (unmatched.empty())
        return;
    std::string values;
    for (const std::string &value : unmatched)
        values += (values.empty() ? "" : ", ") + value;
    throw NothingChosen("No camera matches " + values + ".");
}

// A change has to know who is on the factory's password, and which locks stand open, before it writes anything.
bool needsLook(const Request &request)
{
    return request.selection.needsLook() || request.action == Action::Change;
}

// Only a look tells of two entries with one serial number and model whether they are one camera, and it takes both.
std::vector<bool> whoNeedsLook(const std::vector<std::size_t> &chosen, const std::vector<Camera> &cameras,
                               const Request &request)
{
    std::vector<bool> needed(cameras.size(), false);
    std::set<std::pair<std::string_view, std::string_view>> chosenKinds;
    for (const std::size_t place : chosen) {
        needed[place] = needsLook(request);
        chosenKinds.emplace(cameras[place].serial, cameras[place].model);
    }
    for (const std::size_t place : unclearIdentities(cameras))
        needed[place] = needed[place] || chosenKinds.contains({cameras[place].serial, cameras[place].model});
    return needed;
}

void refuseUnknownMacs(const Selection &selection, const std::vector<Camera> &cameras)
{
    for (const std::uint64_t mac : selection.macs) {
        if (std::ranges::none_of(cameras, [&](const Camera &camera) { return camera.mac == mac; }))
            throw NothingChosen("No camera that can be opened has the MAC address " + formatMacAddress(mac) +
                                '.');
    }
}

// They may be among those that are meant.
void tellUnasked(const std::vector<std::size_t> &chosen, const std::vector<Camera> &cameras)
{
    for (const std::size_t place : chosen) {
        const Camera &camera = cameras[place];
        if (camera.lock == Lock::Unknown && camera.reason)
            complain(shownName(camera) + " is left out, since it could not be asked: " + camera.reason->text);
    }
}

/// \return the job of the entry that stands for \p camera; null where none does
Job *jobOfSame(const Camera &camera, Jobs &jobs)
{
    if (!camera.duplicateOf)
        return nullptr;
    const auto found = std::ranges::find_if(jobs, [&](const Job &job) {
        return job.camera->place == *camera.duplicateOf || job.camera->duplicateOf == camera.duplicateOf;
    });
    return found == jobs.end() ? nullptr : &*found;
}

} // namespace

Jobs chooseJobs(Tree &tree, const Request &request, const std::function<void(const Camera &)> &tick)
{
    std::vector<Camera> &cameras = tree.cameras();
    if (cameras.empty())
        throw NothingChosen(noCameraSentence, statusWithoutCamera(tree));
    const Selection &selection = request.selection;
    refuseUnmatched(selection, cameras);
    const std::vector<std::size_t> chosen = chooseByIdentity(selection, cameras);
    const std::vector<bool> looks = whoNeedsLook(chosen, cameras, request);
    for (std::size_t place = 0; place < cameras.size(); ++place) {
        if (!looks[place])
            continue;
        throwIfInterrupted();
        tick(cameras[place]);
        lookInto(cameras[place]);
    }
    markDuplicates(cameras);
    if (selection.needsLook())
        tellUnasked(chosen, cameras);
    refuseUnknownMacs(selection, cameras);

    Jobs jobs;
    for (const std::size_t place : chosen) {
        Camera &camera = cameras[place];
        if (selection.needsLook() && !passesLook(selection, camera))
            continue;
        if (Job *const same = jobOfSame(camera, jobs)) {
            same->standsForOthers = true;
            continue;
        }
        Job &job = jobs.emplace_back();
        job.camera = &camera;
        job.isNamed = isNamed(selection, camera);
    }
    if (jobs.empty())
        throw NothingChosen("No camera is left by the options.", statusWithoutCamera(tree));
    return jobs;
}

} // namespace fleet
