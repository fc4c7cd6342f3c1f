// SPDX-License-Identifier: MIT
#include "Camera.h"

#include "GenTLError.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <sstream>

namespace simulator {

namespace {

constexpr Register writeOnly[] = {RegCommand, RegNewPassword, RegUnlockPassword};

std::string hex(std::uint64_t value)
{
    std::ostringstream text;
    text << "0x" << std::hex << value;
    return text.str();
}

[[noreturn]] void failAddress(std::uint64_t address)
{
    throw GenTLError(GC_ERR_INVALID_ADDRESS, "no register at " + hex(address));
}

bool contains(const Register &place, std::uint64_t address)
{
    return address >= place.address && address - place.address < place.size;
}

std::string fixedText(std::string_view text, std::size_t size)
{
    std::string bytes(text.substr(0, size));
    bytes.resize(size, '\0');
    return bytes;
}

/// A 32-bit value of the password lock, in the host's byte order.
std::string hostNumber(std::uint32_t value)
{
    std::string bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

/// The password that was written: the bytes without the zeros that fill them up.
std::string passwordIn(std::string_view bytes)
{
    if (bytes.size() > longestPassword)
        throw GenTLError(GC_ERR_INVALID_ADDRESS, "a password register has 64 bytes");
    if (bytes.size() < 8 || bytes.size() % 4 != 0)
        throw GenTLError(GC_ERR_INVALID_VALUE,
                         "a password is written with at least 8 bytes, a multiple of 4");
    return std::string(bytes.substr(0, bytes.find_last_not_of('\0') + 1));
}

} // namespace

Camera::Camera(std::shared_ptr<const CameraSettings> settings, CameraStore &store)
    : settings_(std::move(settings)), store(store), description_(describeCamera(*settings_))
{
    if (isRebooting(store.stateOf(*settings_)))
        loseContact("reboots");
    requireContact();

    const auto &mac = settings_->mac;
    put(RegMacAddress, std::string(2, '\0') + std::string(mac.begin(), mac.end()));
    put(RegCurrentIp, std::string(settings_->ip.begin(), settings_->ip.end()));
    put(RegVendorName, fixedText(settings_->vendor, RegVendorName.size));
    put(RegModelName, fixedText(settings_->model, RegModelName.size));
    put(RegDeviceVersion, fixedText(settings_->firmware, RegDeviceVersion.size));
    put(RegSerialNumber, fixedText(settings_->serial, RegSerialNumber.size));
    put(RegUserName, fixedText(settings_->userName, RegUserName.size));
    put(RegReverseX, number(0, RegReverseX.size));
    put(RegTimestampLatch, number(0, RegTimestampLatch.size));
    put(RegTimestampValue, number(0, RegTimestampValue.size));
    readable[descriptionAddress] = description_.content;
    refreshLockRegisters();
}

std::string Camera::read(std::uint64_t address, std::size_t size)
{
    requireContact();
    refreshLockRegisters();

    std::string result;
    while (result.size() < size) {
        const std::uint64_t position = address + result.size();
        auto found = readable.upper_bound(position);
        if (found == readable.begin() || position - (--found)->first >= found->second.size()) {
            if (isKnown(position))
                throw GenTLError(GC_ERR_ACCESS_DENIED,
                                 "the register at " + hex(position) + " can only be written");
            failAddress(position);
        }
        const std::size_t offset = static_cast<std::size_t>(position - found->first);
        result += std::string_view(found->second).substr(offset, size - result.size());
    }
    return result;
}

void Camera::write(std::uint64_t address, std::string_view bytes)
{
    requireContact();
    const bool hasLock = settings_->lock != LockSetting::None;
    if (hasLock && address == RegCommand.address)
        return writeCommand(bytes);
    if (hasLock && address == RegNewPassword.address)
        return writeNewPassword(bytes);
    if (hasLock && address == RegUnlockPassword.address)
        return writeUnlockPassword(bytes);
    if (address == RegTimestampLatch.address)
        return latchTimestamp(bytes);
    if (address == RegReverseX.address && bytes.size() == RegReverseX.size)
        return put(RegReverseX, std::string(bytes));
    if (isKnown(address))
        throw GenTLError(GC_ERR_ACCESS_DENIED,
                         "the register at " + hex(address) + " can't be written like this");
    failAddress(address);
}

void Camera::requireContact() const
{
    if (!lost.empty())
        throw GenTLError(GC_ERR_IO, "camera \"" + settings_->id + "\": " + lost);
}

void Camera::refreshLockRegisters()
{
    if (settings_->lock == LockSetting::None)
        return;
    const CameraState state = store.stateOf(*settings_);
    put(RegLockState, hostNumber(settings_->lockStateValue.value_or(state.isLocked ? 1 : 0)));
    put(RegPasswordState,
        hostNumber(settings_->passwordStateValue.value_or(state.isDefaultPassword ? 0 : 1)));
}

void Camera::writeCommand(std::string_view bytes)
{
    if (bytes != hostNumber(CmdLock) && bytes != hostNumber(CmdFactoryReset))
        throw GenTLError(GC_ERR_INVALID_VALUE,
                         "the command register takes 1 (lock) and 0x80 (factory reset), 4 bytes");

    const bool isReset = bytes == hostNumber(CmdFactoryReset);
    store.update(*settings_, [&](CameraState &state) {
        state.isLocked = true;
        if (isReset) {
            state.password = factoryPassword;
            state.isDefaultPassword = true;
            state.availableAtMs = nowMs() + settings_->rebootMs;
        }
        return true;
    });
    if (isReset)
        loseContact("reboots");
}

void Camera::writeNewPassword(std::string_view bytes)
{
    const std::string password = passwordIn(bytes);
    if (password.empty())
        throw GenTLError(GC_ERR_INVALID_VALUE, "a password can't be empty");

    store.update(*settings_, [&](CameraState &state) {
        if (state.isLocked)
            throw GenTLError(GC_ERR_ACCESS_DENIED,
                             "a new password is taken only while the camera is unlocked");
        state.password = password;
        state.isDefaultPassword = false;
        return true;
    });
}

void Camera::writeUnlockPassword(std::string_view bytes)
{
    const std::string password = passwordIn(bytes);
    store.update(*settings_, [&](CameraState &state) {
        if (state.password != password)
            return false; // accepted in silence, as cameras do: the lock state tells
        state.isLocked = false;
        return true;
    });
}

void Camera::latchTimestamp(std::string_view bytes)
{
    if (bytes != number(1, RegTimestampLatch.size))
        throw GenTLError(GC_ERR_INVALID_VALUE, "the timestamp latch takes 1, 4 bytes");
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto count = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
    put(RegTimestampValue, number(static_cast<std::uint64_t>(count), RegTimestampValue.size));
}

void Camera::put(const Register &place, std::string bytes)
{
    readable[place.address] = std::move(bytes);
}

/// A value in the byte order of the camera's transport.
std::string Camera::number(std::uint64_t value, std::size_t size) const
{
    std::string bytes;
    for (std::size_t index = 0; index < size; ++index)
        bytes += static_cast<char>(value >> (8 * index) & 0xff);
    if (settings_->type == "GEV")
        std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

bool Camera::isKnown(std::uint64_t address) const
{
    const auto above = readable.upper_bound(address);
    if (above != readable.begin()) {
        const auto &[begin, bytes] = *std::prev(above);
        if (address - begin < bytes.size())
            return true;
    }
    return settings_->lock != LockSetting::None &&
           std::any_of(std::begin(writeOnly), std::end(writeOnly),
                       [&](const Register &place) { return contains(place, address); });
}

} // namespace simulator
