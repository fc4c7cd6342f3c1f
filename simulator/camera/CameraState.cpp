// SPDX-License-Identifier: MIT
// A camera's state before anything is kept for it, and the clock of its reboot.
#include "CameraState.h"

#include <chrono>

namespace simulator {

CameraState stateOf(const CameraSettings &settings, const CameraStates &states)
{
    if (const auto found = states.find(settings.id); found != states.end())
        return found->second;
    CameraState state;
    state.password = settings.password;
    state.isLocked = settings.lock == LockSetting::Locked || settings.lock == LockSetting::Default;
    state.isDefaultPassword = settings.lock == LockSetting::Default;
    return state;
}

std::int64_t nowMs()
{
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(sinceEpoch).count();
}

bool isRebooting(const CameraState &state)
{
    return nowMs() < state.availableAtMs;
}

} // namespace simulator
