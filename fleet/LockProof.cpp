// SPDX-License-Identifier: MIT
#include "LockProof.h"

#include "Device.h"
#include "RegisterFailure.h"

#include <exception>
#include <optional>

namespace fleet {

bool LockProof::isLocked()
{
    camera.lock = Lock::Unknown;
    camera.lock = camera.device->readLocked() ? Lock::Locked : Lock::Unlocked;
    return camera.lock == Lock::Locked;
}

bool LockProof::opens(const Secret &secret)
{
    std::optional<RegisterFailure> failure;
    try {
        camera.device->sendUnlock(secret.reveal());
    } catch (const RegisterFailure &write) {
        failure = write;
    }
    const bool isOpen = !isLocked();
    if (!isOpen && failure && !failure->isRefusal())
        throw RegisterFailure(*failure);
    return isOpen;
}

void LockProof::close()
{
    camera.lock = Lock::Unknown;
    camera.device->sendLock();
    if (!isLocked())
        throw RegisterFailure("The lock stays open.", 0, true);
}

void LockProof::tryToClose() noexcept
{
    try {
        close();
    } catch (const std::exception &) {
        return; // the camera's lock state tells
    }
}

} // namespace fleet
