// SPDX-License-Identifier: MIT
// What a camera remembers beyond its configuration.
#pragma once

#include "Configuration.h"

#include <cstdint>
#include <map>
#include <string>

namespace simulator {

/// What a camera remembers, kept from the first change of it on.
struct CameraState
{
    std::string password;
    bool isLocked = false;
    bool isDefaultPassword = false;
    std::int64_t availableAtMs = 0; ///< end of its reboot, in milliseconds since 1970
};

/// By identifier of the camera.
using CameraStates = std::map<std::string, CameraState>;

/// The state of a camera: the kept one, or that of its configuration.
CameraState stateOf(const CameraSettings &settings, const CameraStates &states);

/// Milliseconds since 1970. The system's clock and not a steady one, since a reboot outlives the process.
std::int64_t nowMs();

/// True while the camera reboots and is not to be seen.
bool isRebooting(const CameraState &state);

} // namespace simulator
