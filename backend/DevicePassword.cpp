// SPDX-License-Identifier: MIT
// The password lock of a device: raw register reads and writes through its port, and the memory of passwords
// used.
#include "ConsoleIO.h"
#include "Device.h"
#include "GenTL_PortInterface.h"
#include "PasswordRegisters.h"
#include "Wipe.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr std::size_t MaxRememberedPasswords = 3;

} // namespace

// The ports are taken as shares of their own: an open on the other thread may replace the member meanwhile. A
// device without a port fails as a read or a write does.

std::uint32_t Device::readRegister(const PasswordRegister &source) const
{
    const auto target = port.load();
    if (!target)
        throw std::runtime_error("The device has no port.");
    std::uint32_t value = 0;
    target->Read(&value, source.address, source.length);
    return value;
}

void Device::writeRegister(const PasswordRegister &target, std::uint32_t value)
{
    const auto device = port.load();
    if (!device)
        throw std::runtime_error("The device has no port.");
    device->Write(&value, target.address, target.length);
}

void Device::writePassword(std::int64_t address, const std::string &password)
{
    const auto target = port.load();
    if (!target)
        throw std::runtime_error("The device has no port.");
    std::vector<char> bytes(paddedPasswordSize(password.size()), '\0');
    const WipeAtEnd wiper(bytes);
    std::copy(password.begin(), password.end(), bytes.begin());
    target->Write(bytes.data(), address, static_cast<std::int64_t>(bytes.size()));
}

bool Device::readPasswordSupport()
{
    if (isOff())
        return false;
    try {
        const std::uint32_t state = readRegister(RegLockState);
        passwordSupported_ = true;
        return state == LockStateLocked;
    } catch (...) {
        // A device without the lock is normal.
        passwordSupported_ = false;
        return false;
    }
}

bool Device::isLocked() const
{
    if (isOff() || !passwordSupported_)
        return false;
    if (!isOpen_)
        return cachedLocked;
    try {
        return readRegister(RegLockState) == LockStateLocked;
    } catch (...) {
        return false;
    }
}

bool Device::isDefaultPassword() const
{
    if (isOff() || !passwordSupported_)
        return false;
    if (!isOpen_)
        return cachedDefault;
    try {
        return readRegister(RegPasswordState) == PasswordStateDefault;
    } catch (...) {
        console::printLine("Password protection not available!");
        return false;
    }
}

void Device::lock()
{
    if (isOff() || !passwordSupported_)
        return;
    try {
        writeRegister(RegCommand, CmdLock);
    } catch (const std::exception &failure) {
        console::printLine("PWD lock failed: ", failure.what());
    }
}

void Device::factoryReset()
{
    if (isOff() || !passwordSupported_)
        return;
    try {
        writeRegister(RegCommand, CmdFactoryReset);
    } catch (const std::exception &failure) {
        console::printLine("Factory reset failed: ", failure.what());
        return;
    }
    close(true); // it is rebooting and cannot answer
}

void Device::setPassword(const std::string &newText)
{
    if (isOff() || !passwordSupported_)
        return;
    if (isLocked()) {
        console::printLine("Device is currently locked. Unlock it first to set a new password.");
        return;
    }
    if (newText.size() > maxLength) {
        console::printLine("Your password is too long.");
        return;
    }
    try {
        writePassword(RegNewPassword, newText);
    } catch (const std::exception &failure) {
        console::printLine("PWD set failed: ", failure.what());
    }
}

void Device::unlock(const std::string &candidate)
{
    if (isOff() || !passwordSupported_ || candidate.size() > maxLength)
        return;
    try {
        writePassword(RegUnlockPassword, candidate);
    } catch (const std::exception &) {
        // The lock state that the caller reads next tells.
    }
}

void Device::rememberPassword(const std::string &used)
{
    const auto known = std::find(passwordHistory_.begin(), passwordHistory_.end(), used);
    if (known != passwordHistory_.end()) {
        passwordHistory_.splice(passwordHistory_.end(), passwordHistory_, known);
        return;
    }
    passwordHistory_.push_back(used);
    if (passwordHistory_.size() > MaxRememberedPasswords) {
        wipe(passwordHistory_.front());
        passwordHistory_.pop_front();
    }
}

std::vector<std::string> Device::passwordHistory() const
{
    return {passwordHistory_.begin(), passwordHistory_.end()};
}
