// SPDX-License-Identifier: MIT
// The dialogue on standard input and output: from the choice of a device to a menu of the password
// operations, by values given in advance or by asking.
#include "BackEnd.h"
#include "ConsoleIO.h"
#include "Device.h"
#include "GenTL.h"
#include "GenTLLibrary.h"
#include "GenericException.h"
#include "RemoteNode.h"
#include "Wipe.h"

#include <algorithm>
#include <exception>
#include <stdexcept>

namespace {

struct MenuEntry
{
    const char *key;
    const char *text;
};

// The places are those of runMenuEntry.
constexpr MenuEntry menu[] = {
    {"q", "quit program"}, {"g", "get current lock status"}, {"l", "lock device"}, {"u", "unlock device"},
    {"n", "new password"}, {"r", "factory reset"},
};
constexpr std::uint64_t MenuQuit = 0;
constexpr std::uint64_t MenuFactoryReset = 5;

constexpr const char *FactoryResetNotice =
    "Factory reset! The device must reboot. This can take a while... Exiting program.";

constexpr std::size_t NumberWidth = 6;  // separator included
constexpr std::size_t ColumnWidth = 19; // separator included

// A value as it is shown and the separator behind it. A value that is too long pushes the rest of its row to the right.
std::string column(const std::string &value, std::size_t width)
{
    constexpr std::string_view separator = " | ";
    const std::string text = console::shown(value);
    const std::size_t used = text.size() + separator.size();
    return text + std::string(used < width ? width - used : 0, ' ') + std::string(separator);
}

std::string lockStatus(const Device &device)
{
    if (!device.passwordSupported())
        return "not supported   ";
    const bool isDefault = device.isDefaultPassword();
    const bool isLocked = device.isLocked();
    if (isDefault)
        return isLocked ? "locked (default)" : "unlocked (deflt)";
    return isLocked ? "locked          " : "unlocked        ";
}

std::string firmwareVersion(const Device &device)
{
    try {
        return device.remoteNode("DeviceFirmwareVersion").valueAsString();
    } catch (const std::exception &) {
        return "(unknown)";
    } catch (const GenICam_3_2_TVN::GenericException &) {
        return "(unknown)";
    }
}

} // namespace

int BackEnd::runConsole()
{
    const WipeAtEnd passwordWiper(presetPassword);
    const WipeAtEnd newPasswordWiper(presetNewPassword);
    if (presetLibrary.empty()) {
        discoverLibraries(true);
    } else {
        libraries.push_back(new GenTLLibrary(presetLibrary));
        console::printLine("Will use selected library ", libraries.back()->path(), ".");
    }
    updateDevices();
    const int status = runWithDevices();
    closeLibraries();
    return status;
}

int BackEnd::runWithDevices()
{
    if (devices().empty()) {
        console::printLine("ERROR: No device available!");
        return 1;
    }
    if (const auto status = selectConsoleDevice())
        return *status;
    Device &device = *selectedDevice;
    device.open();
    if (!device.isOpen()) {
        console::printLine("ERROR: Failed to open device!");
        return 1;
    }
    console::printLine("Did successfully open the device.");
    printSummary(device);

    if (presetFactoryReset) {
        console::printLine(FactoryResetNotice);
        device.factoryReset();
        return 0;
    }
    if (!device.passwordSupported()) {
        console::printLine("Device does not support password protection. Exiting program.");
        return 0;
    }
    if (presetPassword.empty() && !presetLock)
        runMenu(device);
    else
        runPresets(device);
    return 0;
}

// Returns the exit status when there is none to go on with.
std::optional<int> BackEnd::selectConsoleDevice()
{
    const std::vector<Device *> known = devices();
    if (presetSerial.empty()) {
        printDevices(true);
        const std::uint64_t number = selectIndex(known.size(), 1);
        if (number == IndexCancelled) {
            console::printLine("... canceled. Exiting program.");
            return 0;
        }
        selectedDevice = known[number - 1];
        return std::nullopt;
    }
    const auto found = std::ranges::find_if(known, [&](const Device *device) {
        return device->serialNumber() == presetSerial &&
               device->accessStatus() == DEVICE_ACCESS_STATUS_READWRITE;
    });
    if (found == known.end()) {
        console::printLine("ERROR: Could not find accessible device with serial number ", presetSerial, "!");
        return 1;
    }
    selectedDevice = *found;
    // One behind the other: the order in which arguments are evaluated is the compiler's.
    const std::string model = (*found)->model();
    const std::string serialNumber = (*found)->serialNumber();
    console::printLine("Will use selected device ", model, " (", serialNumber, ").");
    return std::nullopt;
}

void BackEnd::printSummary(const Device &device) const
{
    console::printLine("---------------------------------");
    console::printLine("Model Name:           ", device.model());
    console::printLine("Serial number:        ", device.serialNumber());
    console::printLine("Firmware version:     ", firmwareVersion(device));
    console::printLine("Password protection:  ", device.passwordSupported() ? "yes" : "no");
    if (device.passwordSupported()) {
        console::printLine("Default password:     ",
                           device.isDefaultPassword() ? "yes" : "no (user password)");
        console::printLine("Current lock status:  ", device.isLocked() ? "locked" : "not locked");
    }
    console::printLine("---------------------------------");
}

// What the values given in advance ask for, without a question but for a password that is not among them.
void BackEnd::runPresets(const Device &device)
{
    if (!presetPassword.empty()) {
        const bool isDefault = device.isDefaultPassword();
        if (!presetNewPassword.empty())
            changePassword(presetPassword, presetNewPassword);
        else if (!isDefault || presetUnlock)
            unlockOnce(presetPassword);
        else
            console::printLine("\nDefault password! You need to change the password before you can use the "
                               "device...");
    }
    if (presetLock)
        lock();
    console::printLine("Exiting program... Device is ", device.isLocked() ? "locked." : "unlocked.");
}

// The dialogue has no use for the password that opened the lock.
void BackEnd::unlockOnce(const std::string &given)
{
    std::string opened = unlock(given, false);
    wipe(opened);
}

void BackEnd::runMenu(Device &device)
{
    std::vector<std::string> keys;
    for (const MenuEntry &entry : menu)
        keys.emplace_back(entry.key);
    std::uint64_t chosen = MenuQuit;
    do {
        console::printLine("\nInteractive mode. Choose one of the following options: ");
        for (const auto &[key, text] : menu)
            console::printLine("   ", key, ": ", text);
        chosen = selectOption(keys);
        console::print(menu[chosen].key, ": ", menu[chosen].text, "... ");
        runMenuEntry(device, chosen);
    } while (chosen != MenuQuit && chosen != MenuFactoryReset);
}

// The first output continues the line on which the entry stands.
void BackEnd::runMenuEntry(Device &device, std::uint64_t index)
{
    switch (index) {
    case 1:
        console::printLine("Device is currently ", device.isLocked() ? "locked" : "not locked");
        break;
    case 2:
        lock();
        break;
    case 3:
        if (!device.isDefaultPassword()) {
            unlockOnce({});
        } else {
            console::printLine("\nDefault password! You need to change password first...");
            changePassword({}, {});
        }
        break;
    case 4:
        console::print("\n");
        changePassword({}, {});
        console::print("\n");
        break;
    case MenuFactoryReset:
        console::printLine("\n", FactoryResetNotice);
        device.factoryReset();
        break;
    default:
        break;
    }
}

std::uint64_t BackEnd::selectIndex(const std::uint64_t &maximum, const std::uint64_t &minimum)
{
    if (maximum <= minimum)
        return minimum;
    for (;;) {
        console::print("\nSelect an entry by its index: ");
        const auto line = console::readLine();
        if (!line || *line == "c" || *line == "q")
            return IndexCancelled;
        try {
            const std::uint64_t index =
                std::stoull(*line); // takes leading digits, and wraps a negative number
            if (index >= minimum && index <= maximum) {
                console::print("\n");
                return index;
            }
            console::printLine("Your input is out of bounds. Select a valid index.");
        } catch (const std::logic_error &) {
            // No number, or too large a one: the question is put again without a word.
        }
    }
}

std::uint64_t BackEnd::selectOption(std::vector<std::string> keys)
{
    const auto placeOf = [&](const std::string &key) {
        return static_cast<std::uint64_t>(std::ranges::find(keys, key) - keys.begin());
    };
    if (keys.size() < 2)
        return 0;
    for (;;) {
        console::print("\nSelect an option: ");
        const auto line = console::readLine();
        const std::uint64_t place = placeOf(line.value_or("q"));
        if (place < keys.size())
            return place;
        if (!line)
            return 0;
        console::printLine("Your input is out of bounds. Select a valid option.");
    }
}

void BackEnd::listLibraries()
{
    discoverLibraries(true);
    printLibraries();
}

void BackEnd::listDevices()
{
    discoverLibraries(true);
    updateDevices();
    printDevices(false);
}

void BackEnd::printLibraries() const
{
    console::printLine("\nAvailable GenTL libraries:");
    for (std::size_t i = 0; i < libraries.size(); ++i)
        console::printLine(i + 1, ") ", libraries[i]->path());
}

void BackEnd::printDevices(bool numbered) const
{
    console::printLine(numbered ? "No. | " : "",
                       "Model            | Serial           | UserDefined name | Lock status      | Id");
    std::vector<std::string> unread; // the numbers of devices
    const std::vector<Device *> known = devices();
    for (std::size_t i = 0; i < known.size(); ++i) {
        const Device &device = *known[i];
        const std::string number = std::to_string(i + 1);
        const std::string start = numbered ? column(number, NumberWidth) : std::string();
        const std::string model = device.model();
        const std::string serialNumber = device.serialNumber();
        std::string name;
        std::string status;
        try {
            name = device.userDefinedName();
            status = lockStatus(device);
        } catch (const std::exception &) {
            name = "(unknown)";
            status = "(unknown)       ";
            unread.push_back(number);
        }
        console::printLine(start, column(model, ColumnWidth), column(serialNumber, ColumnWidth),
                           column(name, ColumnWidth), status, " | ", device.id());
    }
    for (const std::string &number : unread)
        console::print("\nWARNING: Could not read device information of device ", number,
                       ". Check network configuration.");
    if (!unread.empty())
        console::print("\n\n");
}
