// SPDX-License-Identifier: MIT
#include "Resume.h"

#include "Identity.h"
#include "Interrupted.h"
#include "Look.h"
#include "MacAddress.h"
#include "Output.h"

#include <algorithm>

namespace fleet {

namespace {

Camera missingCamera(const CameraKey &key)
{
    Camera camera;
    camera.serial = key.serial.toStdString();
    camera.model = key.model.toStdString();
    camera.place.id = key.id.toStdString();
    camera.mac = parseMacAddress(key.mac.toStdString());
    return camera;
}

class Builder
{
public:
    Builder(Tree &tree, Resumption &resumption) : tree(tree), resumption(resumption) {}

    void add(const CameraKey &key, bool hasIntent)
    {
        Camera *const camera = find(key);
        if (camera && std::ranges::find(resumption.jobs, camera, &Job::camera) != resumption.jobs.end())
            return;
        Job &job = resumption.jobs.emplace_back();
        job.isNamed = true;
        job.begunAs = key;
        job.rules.tryNewFirst = hasIntent;
        job.rules.wasBefore = hasIntent ? key.lock : Lock::Unknown;
        if (camera) {
            job.camera = camera;
            return;
        }
        job.camera = &resumption.missing.emplace_back(missingCamera(key));
        job.outcome = Outcome{
            Result::Failed,
            hasIntent ? InForce::Unknown : InForce::Old,
            Reason{ReasonCode::Vanished, "The camera is not there.",
                   hasIntent ? "Plug it in, then run change --resume again." : "Plug it in, then change it."},
            {}};
    }

private:
    // By what is known without a look first; then the look tells the MAC address, which decides.
    Camera *find(const CameraKey &key)
    {
        for (Camera &camera : tree.cameras()) {
            if (!CameraKey(camera).isSame(key))
                continue;
            throwIfInterrupted();
            if (!camera.wasLooked)
                lookInto(camera);
            const bool hidesMac = camera.wasLooked && !camera.mac && !key.mac.isEmpty();
            if (!hidesMac && CameraKey(camera).isSame(key))
                return &camera;
        }
        return nullptr;
    }

    Tree &tree;
    Resumption &resumption;
};

} // namespace

Resumption resumeJobs(Tree &tree, const Journal &journal)
{
    Resumption resumption;
    const Unsettled &left = journal.unsettled();
    resumption.runs = left.runs;
    Builder builder(tree, resumption);
    for (const CameraKey &key : left.intents)
        builder.add(key, true);
    for (const CameraKey &key : left.notReached)
        builder.add(key, false);
    markDuplicates(tree.cameras());
    if (resumption.jobs.empty())
        complain("Nothing is left of an earlier run.");
    return resumption;
}

} // namespace fleet
