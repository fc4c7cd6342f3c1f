// SPDX-License-Identifier: MIT
#include "Reset.h"

#include "Device.h"
#include "Interruption.h"
#include "Look.h"
#include "RegisterFailure.h"
#include "Tree.h"

#include <chrono>
#include <string>
#include <thread>
#include <utility>

namespace fleet {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 60s;
constexpr auto interval = 200ms;

Outcome notBack(std::string text)
{
    return {Result::NotProved,
            {},
            Reason{ReasonCode::Vanished, std::move(text), "Look for it with torvane list."},
            {}};
}

/// Takes the camera of before by its new \p device.
/// \return whether it is back as it should be
bool isBack(Camera &camera, Device &device, bool mayOpen)
{
    camera.device = &device;
    camera.access = accessOf(device);
    if (!mayOpen)
        return camera.access == Access::Free;
    lookInto(camera);
    return camera.password == Password::Factory;
}

} // namespace

// What was read of it before holds no more.
Outcome sendReset(Camera &camera)
{
    try {
        camera.device->sendFactoryReset();
    } catch (const RegisterFailure &failure) {
        return {Result::Failed,
                {},
                Reason{ReasonCode::WriteFailed, failure.what(),
                       "Check cable and power of the camera, and try again."},
                {}};
    }
    camera.lock = Lock::Unknown;
    camera.password = Password::Unknown;
    return {Result::Done, {}, {}, {}};
}

// Until it has left the list it is the camera of before, and says nothing of the reset. When it is back, it is opened once,
// but not a third time in a run.
Outcome awaitReturn(Tree &tree, Camera &camera, bool mayOpen)
{
    bool wasAway = false;
    camera.wasLooked = false;
    for (const auto end = std::chrono::steady_clock::now() + patience;
         std::chrono::steady_clock::now() < end;) {
        if (platform::isInterrupted())
            return notBack("The run was interrupted before the camera was back.");
        Device *const device = tree.findAgain(camera);
        wasAway = wasAway || device != camera.device;
        if (device && wasAway && isBack(camera, *device, mayOpen))
            return {Result::Done, {}, {}, {}};
        if (camera.wasLooked)
            return notBack("The camera is back, but not on its factory password.");
        std::this_thread::sleep_for(interval);
    }
    return notBack("The camera has not come back within 60 s.");
}

} // namespace fleet
