// SPDX-License-Identifier: MIT
// Which cameras a run is about. Values of one option are alternatives, different options narrow. What the options say is
// taken in two steps, since some can only be answered by a look into the camera.
#pragma once

#include "Camera.h"

#include <cstdint>
#include <string>
#include <vector>

namespace fleet {

struct Selection
{
    // Plain texts, or patterns with "*".
    std::vector<std::string> serials; ///< those of --from included
    std::vector<std::string> ids;
    std::vector<std::string> models;
    std::vector<std::string> interfaces;
    // Answered by a look.
    std::vector<std::uint64_t> macs;
    bool onFactory = false;
    bool locked = false;
    bool unlocked = false;

    bool all = false;

    /// Whether no option was given. A producer's file alone chooses nothing.
    bool choosesNothing() const;
    bool needsLook() const { return !macs.empty() || onFactory || locked || unlocked; }
};

/// Those of \p cameras that the first step leaves, by place, in order. All of them where nothing is chosen.
std::vector<std::size_t> chooseByIdentity(const Selection &selection, const std::vector<Camera> &cameras);

/// The values that no camera has, each with its option, such as "--serial A1": a run ends on them before anything is
/// written.
std::vector<std::string> unmatchedValues(const Selection &selection, const std::vector<Camera> &cameras);

/// Whether \p camera, which has been looked into, passes the second step.
bool passesLook(const Selection &selection, const Camera &camera);

/// Whether the user named this very camera, by its serial number, its identifier or its MAC address, and no pattern: what
/// cannot be done with it then is a failure, and nothing that is passed over.
bool isNamed(const Selection &selection, const Camera &camera);

} // namespace fleet
