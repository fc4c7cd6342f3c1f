// SPDX-License-Identifier: MIT
// One chosen camera on its way through a run: its secrets once they are resolved, its outcome once it has one.
#pragma once

#include "Camera.h"
#include "Journal.h"
#include "Operations.h"
#include "Outcome.h"
#include "Secret.h"

#include <optional>
#include <vector>

namespace fleet {

struct Job
{
    Camera *camera = nullptr;  ///< of the tree
    bool isNamed = false;      ///< by the user, as this very camera
    bool goesBySerial = false; ///< its choice or a secret: then no other camera may bear that serial number
    bool standsForOthers = false;     ///< chosen entries were passed over as this very camera
    std::optional<CameraKey> begunAs; ///< the camera of an earlier run that is gone on with
    std::optional<Secret> current;
    bool isFactorys = false; ///< the current one, since the camera said that it is on it
    std::optional<Secret> next;
    ChangeRules rules;              ///< of a change
    bool hasIntent = false;         ///< the journal has one of this run
    std::optional<Outcome> outcome; ///< with one, nothing more is done
};

/// What is in force on a camera to which this run has written nothing; nothing where the run is no change. One whose change
/// an earlier run has begun stands on one of two passwords.
inline std::optional<InForce> inForceUntouched(const Job &job, Action action)
{
    if (action != Action::Change)
        return std::nullopt;
    return job.rules.tryNewFirst ? InForce::Unknown : InForce::Old;
}

using Jobs = std::vector<Job>;

} // namespace fleet
