// SPDX-License-Identifier: MIT
// The selected device and what a user can do to its lock. A camera does not report a wrong password as an
// error: an operation recognises it only by the lock that still stands. A pass may deselect the device or close it
// at any time, so each operation takes the selection once; the rule check, to which only the console comes with its one
// thread, needs one.
#include "BackEnd.h"
#include "ConsoleIO.h"
#include "Device.h"
#include "Wipe.h"

#include <algorithm>
#include <utility>

namespace {

// Compared with and named to the user; never written to a device.
constexpr std::string_view FactoryPassword = "mapleoak";

// A device that a pass has closed in the middle of an operation reads as not locked too, and proves nothing.
bool isProvedUnlocked(const Device &device)
{
    return !device.isLocked() && device.isOpen();
}

} // namespace

void BackEnd::selectDevice(Device *device)
{
    selectedDevice = device;
    if (device)
        device->open();
}

bool BackEnd::selectedIsClosed() const
{
    const Device *device = selectedDevice;
    return device && !device->isOpen();
}

bool BackEnd::selectedIsLocked() const
{
    const Device *device = selectedDevice;
    return device ? device->isLocked() : true;
}

bool BackEnd::selectedIsDefaultPassword() const
{
    const Device *device = selectedDevice;
    return device ? device->isDefaultPassword() : false;
}

std::vector<std::string> BackEnd::selectedPasswordHistory() const
{
    const Device *device = selectedDevice;
    return device ? device->passwordHistory() : std::vector<std::string>();
}

// The selected device when it can be operated. Null when it cannot, which has been printed, or when there is none.
Device *BackEnd::operableDevice() const
{
    Device *device = selectedDevice;
    if (!device)
        return nullptr;
    if (!device->isOpen()) {
        console::printLine("Error: The device is not open.");
        return nullptr;
    }
    if (!device->passwordSupported()) {
        console::printLine("Error: The device has no password lock.");
        return nullptr;
    }
    return device;
}

bool BackEnd::lock()
{
    Device *device = operableDevice();
    if (!device)
        return false;
    device->lock();
    if (!device->isLocked()) {
        console::printLine("Error: Locking failed!");
        return false;
    }
    console::printLine("Successfully locked!");
    return true;
}

std::string BackEnd::unlock(std::string given, bool forChange)
{
    const WipeAtEnd wiper(given);
    Device *device = operableDevice();
    if (!device)
        return {};
    const std::uint64_t limit = given.empty() ? maxUnlockRetries : 1;
    if (!forChange && !device->isLocked()) {
        console::printLine("Device already unlocked!");
        return {};
    }
    for (std::uint64_t tries = 1;; ++tries) {
        if (given.empty())
            askPassword(false, given);
        if (given.empty()) {
            console::printLine("Unlock device canceled by user...");
            return {};
        }
        // An open lock proves nothing about a password.
        if (tries == 1 && forChange && !device->isLocked())
            device->lock();
        device->unlock(given);
        if (isProvedUnlocked(*device)) {
            console::printLine("Successfully unlocked!");
            device->rememberPassword(given);
            return given;
        }
        console::printLine("Error: Unlocking failed! Wrong password?");
        if (tries >= limit)
            break;
        given.clear();
    }
    if (limit > 1)
        console::printLine("Error: Maximum number of retries reached.");
    return {};
}

int BackEnd::changePassword(std::string oldPassword, std::string newPassword)
{
    const WipeAtEnd oldWiper(oldPassword);
    const WipeAtEnd newWiper(newPassword);
    Device *device = operableDevice();
    if (!device)
        return -1;
    console::printLine("Changing the password ...");
    if (!oldPassword.empty() && newPassword == oldPassword) {
        console::printLine("Error: passwords must be different!");
        return -1;
    }
    std::string proved = unlock(oldPassword, true);
    const WipeAtEnd provedWiper(proved);
    if (device->isLocked() || proved.empty()) {
        console::printLine("Error when changing password: Camera might be locked.");
        return 1;
    }
    if (newPassword.empty() && !askNewPassword(proved, newPassword)) {
        console::printLine("Entering new password canceled by user...");
        return -1;
    }
    if (!proveNewPassword(*device, newPassword)) {
        console::printLine("Error: Could not set new password!");
        return 2;
    }
    console::printLine("Successfully changed the password!");
    device->rememberPassword(newPassword);
    return 0;
}

// Returns false when cancelled. The confirmation cannot be cancelled, only the end of the input ends it: an
// empty one differs, and the question is put again.
bool BackEnd::askNewPassword(const std::string &oldPassword, std::string &newPassword)
{
    do {
        console::printLine("Enter a new password ...");
        askPassword(true, newPassword);
        if (newPassword.empty())
            return false;
    } while (newPassword == oldPassword);
    std::string confirmation;
    const WipeAtEnd wiper(confirmation);
    while (confirmation != newPassword) {
        console::printLine("Confirm new password ...");
        if (askPassword(false, confirmation) == PromptResult::InputEnded)
            return false;
    }
    return true;
}

// Locks and unlocks with the new password, which also leaves the camera unlocked.
bool BackEnd::proveNewPassword(Device &device, const std::string &newPassword)
{
    device.setPassword(newPassword);
    device.lock();
    device.unlock(newPassword);
    return isProvedUnlocked(device);
}

void BackEnd::factoryResetSelected()
{
    Device *device = operableDevice();
    if (!device)
        return;
    device->factoryReset();
    bool listed = false;
    editDevices([&](std::vector<Device *> &list) {
        const auto entry = std::ranges::find(list, device);
        listed = entry != list.end();
        if (listed)
            list.erase(entry);
    });
    if (listed)
        selectedDevice.compare_exchange_strong(device, nullptr);
}

bool BackEnd::checkNewPassword(const std::string &candidate, PasswordCheck &code, std::string *message) const
{
    code = PasswordCheck::PasswordTooShort;
    const auto refuse = [&](PasswordCheck reason, std::string words) {
        code = reason;
        if (message)
            *message = std::move(words);
        return false;
    };
    if (candidate.size() < minPasswordLength_)
        return refuse(PasswordCheck::PasswordTooShort, console::compose("Your password is to short. (min ",
                                                                        minPasswordLength_, " characters)"));
    if (candidate.size() > maxPasswordLength_)
        return refuse(PasswordCheck::PasswordTooLong, console::compose("Your password is too long. (max ",
                                                                       maxPasswordLength_, " characters)"));
    if (candidate == FactoryPassword)
        return refuse(PasswordCheck::PasswordIsDefault, "Cannot use default 'mapleoak' as new password.");
    std::vector<std::string> history = selectedDevice.load()->passwordHistory();
    const bool isUsed = std::ranges::find(history, candidate) != history.end();
    std::ranges::for_each(history, [](std::string &used) { wipe(used); });
    if (isUsed)
        return refuse(PasswordCheck::PasswordUsedBefore, "Your password has been used before.");
    code = PasswordCheck::PasswordOk;
    return true;
}

std::string BackEnd::promptPassword(bool withRuleCheck)
{
    std::string password;
    askPassword(withRuleCheck, password);
    return password;
}

// Leaves password empty unless one was entered; an empty line counts as entered.
BackEnd::PromptResult BackEnd::askPassword(bool withRuleCheck, std::string &password)
{
    for (;;) {
        try {
            wipe(password);
            console::print("\nEnter password (use 'c' to cancel): ");
            auto line = console::readLine();
            if (!line)
                return PromptResult::InputEnded;
            const WipeAtEnd wiper(*line);
            if (*line == "c" || *line == "q") {
                console::printLine("Action canceled...");
                return PromptResult::Cancelled;
            }
            PasswordCheck code{};
            std::string message;
            if (!withRuleCheck || checkNewPassword(*line, code, &message)) {
                password = *line;
                return PromptResult::Entered;
            }
            console::printLine(message);
        } catch (...) {
            // Whatever went wrong with one line, the question is put again.
        }
    }
}
