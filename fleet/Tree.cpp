// SPDX-License-Identifier: MIT
#include "Tree.h"

#include "Collector.h"
#include "Device.h"
#include "GenTLLibrary.h"
#include "Identity.h"
#include "Interrupted.h"
#include "Output.h"
#include "ProducerFiles.h"
#include "TLInterface.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace fleet {

namespace {

Reason producerFailure(const std::string &text)
{
    return {ReasonCode::Producer, text, "Run 'torvane doctor' to see what is wrong with it."};
}

std::optional<std::string> userNameOf(const Device &device)
{
    try {
        return device.userDefinedName();
    } catch (const std::runtime_error &) {
        return std::nullopt; // the producer does not tell it
    }
}

Camera describe(Device &device, Place place)
{
    const Collector lines;
    Camera camera;
    camera.device = &device;
    camera.place = std::move(place);
    camera.model = device.model();
    camera.serial = device.serialNumber();
    camera.userName = userNameOf(device);
    camera.access = accessOf(device);
    if (lines.hasError())
        camera.reason =
            Reason{ReasonCode::ReadFailed, lines.text(), "Check cable, power and address of the camera."};
    return camera;
}

} // namespace

// GenTL's DEVICE_ACCESS_STATUS. What this host has open itself is held by another program here: a run opens no camera
// twice.
Access accessOf(const Device &device)
{
    switch (device.accessStatus()) {
    case 1: // DEVICE_ACCESS_STATUS_READWRITE
        return Access::Free;
    case 2: // DEVICE_ACCESS_STATUS_READONLY
        return Access::ReadOnly;
    case 3: // DEVICE_ACCESS_STATUS_NOACCESS
        return Access::Unreachable;
    case 4: // DEVICE_ACCESS_STATUS_BUSY
    case 5: // DEVICE_ACCESS_STATUS_OPEN_READWRITE
    case 6: // DEVICE_ACCESS_STATUS_OPEN_READONLY
        return Access::Held;
    default:
        return Access::Unknown;
    }
}

std::vector<std::string> producerFiles(const std::vector<std::string> &libraries)
{
    const auto pathOf = [](const std::string &name) {
        return std::filesystem::path(std::u8string(name.begin(), name.end()));
    };
    std::vector<std::string> files;
    for (const std::string &file : libraries.empty() ? environmentProducerFiles() : libraries) {
        const auto isSame = [&](const std::string &other) {
            std::error_code notThere;
            return file == other || std::filesystem::equivalent(pathOf(file), pathOf(other), notThere);
        };
        if (std::ranges::none_of(files, isSame))
            files.push_back(file);
    }
    return files;
}

Status statusWithoutCamera(const Tree &tree)
{
    return tree.hasFailure() ? Status::Unexpected : Status::NoCamera;
}

void tellProducerFailures(const Tree &tree)
{
    for (const Producer &producer : tree.producers()) {
        if (producer.failure)
            complain(producer.file + ": " + producer.failure->text);
    }
}

Tree::Tree(const std::vector<std::string> &files)
{
    for (const std::string &file : files) {
        throwIfInterrupted();
        const auto begin = std::chrono::steady_clock::now();
        const Collector lines;
        libraries.push_back(std::make_unique<GenTLLibrary>(file));
        Producer &producer = producers_.emplace_back();
        producer.file = file;
        enumerate(*libraries.back(), producer);
        if (lines.hasError())
            producer.failure = producerFailure(lines.text());
        producer.discovery =
            std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin);
    }
    markDuplicates(cameras_);
}

Tree::~Tree()
{
    const Collector dropped;
    libraries.clear();
    retired.clear();
}

void Tree::enumerate(GenTLLibrary &library, Producer &producer)
{
    if (!library.gentl())
        return;
    producer.isLoaded = true;
    producer.genTLVersion = library.getGenTLVersionString();
    library.openTL();
    if (!library.isOpen())
        return;
    library.updateInterfaces(false, retired);
    for (TLInterface *const interface : library.interfaces())
        enumerate(*interface, producer);
    {
        const Collector dropped; // what it does not say of itself hides no camera
        producer.vendor = library.vendor();
        producer.version = library.version();
    }
}

void Tree::enumerate(TLInterface &interface, Producer &producer)
{
    ++producer.interfaces;
    interface.open();
    if (!interface.isOpen())
        return;
    interface.updateDeviceList(retired);
    for (Device *const device : interface.devices()) {
        cameras_.push_back(describe(*device, {producer.file, interface.id(), device->id()}));
        ++producer.cameras;
    }
}

bool Tree::hasFailure() const
{
    return std::ranges::any_of(producers_,
                               [](const Producer &producer) { return producer.failure.has_value(); });
}

Device *Tree::findAgain(const Camera &camera)
{
    const Collector dropped;
    for (const auto &library : libraries) {
        if (library->path() != camera.place.producer)
            continue;
        for (TLInterface *const interface : library->interfaces()) {
            if (interface->id() != camera.place.interface || !interface->isOpen())
                continue;
            interface->updateDeviceList(retired);
            for (Device *const device : interface->devices()) {
                if (device->id() == camera.place.id)
                    return device;
            }
        }
    }
    return nullptr;
}

} // namespace fleet
