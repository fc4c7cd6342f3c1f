// SPDX-License-Identifier: MIT
// The tree of producers, interfaces and devices, and the flat list of devices that follows it.
#include "BackEnd.h"
#include "ConsoleIO.h"
#include "Device.h"
#include "GenTLLibrary.h"
#include "GenericException.h"
#include "ProducerSearch.h"
#include "RollCall.h"
#include "TLInterface.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <unordered_set>
#include <utility>

namespace {

void probe(Device &device)
{
    const auto report = [&](const char *text) {
        console::printLine("ERROR: Probing device '", device.identifier(), "' failed!");
        console::printLine("       Msg: ", text);
    };
    try {
        device.probe();
    } catch (const std::exception &failure) {
        report(failure.what());
    } catch (const GenICam_3_2_TVN::GenericException &failure) {
        report(failure.GetDescription());
    }
}

} // namespace

// One pass: the flat list as it was before, which of its devices the tree still has, and which are new.
struct BackEnd::Pass
{
    explicit Pass(std::shared_ptr<const std::vector<Device *>> list)
        : previous(std::move(list)), rollCall(*previous)
    {}

    const std::shared_ptr<const std::vector<Device *>> previous;
    RollCall<Device *> rollCall;
    std::vector<Device *> added; // in order of first sight
};

BackEnd::BackEnd() : devices_(std::make_shared<const std::vector<Device *>>()) {}

BackEnd::~BackEnd()
{
    closeLibraries();
}

bool BackEnd::discoverLibraries(bool searchEnvironment)
{
    std::vector<std::string> found = GenICam_Interfaces::findCtiFiles(".");
    if (searchEnvironment)
        std::ranges::move(GenICam_Interfaces::findCtiFilesInGenTLPaths(), std::back_inserter(found));
    if (found.empty()) {
        console::printLine("No GenTL libraries detected!");
        return false;
    }

    std::vector<std::string> known;
    std::ranges::transform(libraries, std::back_inserter(known), &GenTLLibrary::path);
    for (const std::string &path : found) {
        // A name that is found twice becomes two libraries: only what was known before is passed over.
        if (std::ranges::find(known, path) != known.end())
            continue;
        auto *library = new GenTLLibrary;
        library->initLibrary(path);
        libraries.push_back(library);
    }
    for (std::size_t place = known.size(); place-- > 0;) {
        if (std::ranges::find(found, known[place]) != found.end())
            continue;
        libraries[place]->retire(retired);
        delete libraries[place];
        libraries.erase(libraries.begin() + static_cast<std::ptrdiff_t>(place));
    }
    return true;
}

void BackEnd::updateDevices()
{
    RetiredObjects earlier = std::exchange(retired, {});
    Pass pass(devices_.load());

    for (GenTLLibrary *library : libraries) {
        if (!library->gentl())
            continue;
        // A library that cannot be opened hides all that stand behind it, as long as it fails.
        if (!updateLibrary(*library, pass))
            break;
    }
    followTree(pass);
    freeRetired(std::move(earlier));
}

// Returns whether the library is open.
bool BackEnd::updateLibrary(GenTLLibrary &library, Pass &pass)
{
    if (!library.isOpen())
        library.openTL();
    if (!library.isOpen())
        return false;
    library.updateInterfaces(false, retired);
    for (TLInterface *interface : library.interfaces()) {
        if (!interface->isOpen())
            interface->open();
        if (!interface->isOpen())
            break;
        interface->updateDeviceList(retired);
        for (Device *device : interface->devices())
            meetDevice(*device, pass);
    }
    return true;
}

void BackEnd::meetDevice(Device &device, Pass &pass)
{
    if (pass.rollCall.answer(&device))
        return;
    probe(device);
    pass.added.push_back(&device);
}

// Brings the flat list in step with the tree, in one edit: each copies the list.
void BackEnd::followTree(const Pass &pass)
{
    std::unordered_set<Device *> gone;
    for (const std::size_t place : pass.rollCall.missing())
        gone.insert((*pass.previous)[place]);
    if (gone.empty() && pass.added.empty())
        return;
    editDevices([&](std::vector<Device *> &list) {
        std::erase_if(list, [&](Device *device) { return gone.contains(device); });
        list.insert(list.end(), pass.added.begin(), pass.added.end());
    });
    Device *selected = selectedDevice;
    if (gone.contains(selected))
        selectedDevice.compare_exchange_strong(selected, nullptr);
}

// The window's thread takes a device off the list too, so a change is made on a copy and repeated when the
// list was another one meanwhile.
void BackEnd::editDevices(const std::function<void(std::vector<Device *> &)> &edit)
{
    auto present = devices_.load();
    std::shared_ptr<const std::vector<Device *>> next;
    do {
        std::vector<Device *> list = *present;
        edit(list);
        next = std::make_shared<const std::vector<Device *>>(std::move(list));
    } while (!devices_.compare_exchange_weak(present, next));
}

std::vector<Device *> BackEnd::devices() const
{
    return *devices_.load();
}

RetiredObjects BackEnd::takeRetired()
{
    return std::exchange(retired, {});
}

void BackEnd::freeRetired(RetiredObjects objects)
{
    for (const auto &object : objects) {
        Device *selected = selectedDevice;
        if (object.get() == selected)
            selectedDevice.compare_exchange_strong(selected, nullptr);
    }
}

void BackEnd::closeLibraries()
{
    for (GenTLLibrary *library : libraries)
        delete library;
    libraries.clear();
    retired.clear();
}
