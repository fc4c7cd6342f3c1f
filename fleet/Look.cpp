// SPDX-License-Identifier: MIT
#include "Look.h"

#include "Collector.h"
#include "Device.h"
#include "RegisterFailure.h"
#include "RemoteNode.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace fleet {

namespace {

/// Reads one feature; an exception of any family means that it cannot be read.
template <class Read>
auto feature(Read read) -> std::optional<decltype(read())>
{
    try {
        return read();
    } catch (...) {
        return std::nullopt;
    }
}

std::optional<std::int64_t> integerFeature(const Device &device, const char *name)
{
    const auto value = feature([&] { return device.remoteNode(name).valueAsInteger(); });
    return value && *value != RemoteNode::NoInteger ? value : std::nullopt;
}

/// \return whether any register could be read by way of the features
bool readFeatures(const Device &device, Camera &camera)
{
    const auto firmware = feature([&] { return device.remoteNode("DeviceFirmwareVersion").valueAsString(); });
    if (firmware && !firmware->empty())
        camera.firmware = *firmware;
    const auto ip = integerFeature(device, "GevCurrentIPAddress");
    if (ip && *ip != 0)
        camera.ip = static_cast<std::uint32_t>(*ip);
    // A camera that answers zero for every register is no other camera's double.
    const auto mac = integerFeature(device, "GevMACAddress");
    if (mac && *mac != 0)
        camera.mac = static_cast<std::uint64_t>(*mac) & 0xffff'ffff'ffff;
    return camera.firmware || ip || mac;
}

Reason readFailedReason(std::string text)
{
    return {ReasonCode::ReadFailed, std::move(text), "Check cable and power of the camera, and try again."};
}

void readLock(const Device &device, Camera &camera, bool answersForAnother)
{
    try {
        camera.lock = device.readLocked() ? Lock::Locked : Lock::Unlocked;
        camera.password = device.readFactoryPassword() ? Password::Factory : Password::User;
    } catch (const RegisterFailure &failure) {
        const bool hasNone = camera.lock == Lock::Unknown && failure.isNoSuchRegister() && answersForAnother;
        if (hasNone) {
            camera.lock = Lock::None;
            camera.password = Password::None;
            return;
        }
        camera.reason = readFailedReason(failure.what());
    }
}

} // namespace

std::optional<Reason> accessReason(Access access)
{
    switch (access) {
    case Access::Held:
        return Reason{ReasonCode::Held, "Another program holds the camera.",
                      "Close it there, and try again."};
    case Access::ReadOnly:
        return Reason{ReasonCode::ReadOnly, "The camera can only be read from here.",
                      "Close it in the program that controls it, and try again."};
    case Access::Unreachable:
        return Reason{ReasonCode::Unreachable, "The camera is seen, but can't be reached.",
                      "Another program holds it, or its address lies in another network."};
    default:
        return std::nullopt;
    }
}

Outcome noLockOutcome(bool isNamed)
{
    return {isNamed ? Result::Failed : Result::Skipped,
            {},
            Reason{ReasonCode::NoLock, "The camera has no password lock.", "Leave it out."},
            {}};
}

Reason openReason(std::int32_t code, std::string text)
{
    constexpr std::int32_t heldCodes[] = {-1004, -1005, -1022}; // RESOURCE_IN_USE, ACCESS_DENIED, BUSY
    if (std::ranges::find(heldCodes, code) != std::end(heldCodes))
        return *accessReason(Access::Held);
    return {ReasonCode::Unreachable, std::move(text), "Check cable, power and address of the camera."};
}

void readOpened(Camera &camera)
{
    camera.wasLooked = true;
    camera.reason.reset();
    readLock(*camera.device, camera, readFeatures(*camera.device, camera));
}

void readLockAgain(Camera &camera)
{
    camera.reason.reset();
    camera.lock = Lock::Unknown;
    camera.password = Password::Unknown;
    readLock(*camera.device, camera, false);
}

void lookInto(Camera &camera)
{
    Device &device = *camera.device;
    // Of one that does not tell its access, the try tells.
    if (camera.access == Access::Held || camera.access == Access::Unreachable) {
        if (!camera.reason)
            camera.reason = accessReason(camera.access);
        return;
    }
    const Collector lines;
    const std::int32_t code = device.openForReading();
    if (!device.isOpen()) {
        camera.reason = openReason(code, lines.text());
        if (camera.reason->code == ReasonCode::Held)
            camera.access = Access::Held;
        return;
    }
    readOpened(camera);
    device.close(true);
}

} // namespace fleet
