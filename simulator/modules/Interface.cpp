// SPDX-License-Identifier: MIT
#include "Interface.h"

#include "Producer.h"
#include "TransportLayer.h"

#include <algorithm>

namespace simulator {

namespace {

bool hasSameId(const std::shared_ptr<const CameraSettings> &left,
               const std::shared_ptr<const CameraSettings> &right)
{
    return left->id == right->id;
}

/// Refuses what the configured access doesn't allow.
void requireAccess(const CameraSettings &camera, DEVICE_ACCESS_FLAGS access)
{
    const std::string name = "camera \"" + camera.id + '"';
    if (access != DEVICE_ACCESS_READONLY && access != DEVICE_ACCESS_CONTROL &&
        access != DEVICE_ACCESS_EXCLUSIVE)
        throw GenTLError(GC_ERR_INVALID_PARAMETER, "no access to open with: " + std::to_string(access));

    switch (camera.access) {
    case DEVICE_ACCESS_STATUS_READONLY:
        if (access != DEVICE_ACCESS_READONLY)
            throw GenTLError(GC_ERR_ACCESS_DENIED, name + " can only be read");
        return;
    case DEVICE_ACCESS_STATUS_NOACCESS:
        throw GenTLError(GC_ERR_ACCESS_DENIED, name + " can't be accessed");
    case DEVICE_ACCESS_STATUS_BUSY:
        throw GenTLError(GC_ERR_ACCESS_DENIED, name + " is busy");
    case DEVICE_ACCESS_STATUS_OPEN_READWRITE:
    case DEVICE_ACCESS_STATUS_OPEN_READONLY:
        throw GenTLError(GC_ERR_RESOURCE_IN_USE, name + " is open already");
    default:
        return;
    }
}

} // namespace

Interface::Interface(Producer &producer, TransportLayer &parent,
                     std::shared_ptr<const InterfaceSettings> settings)
    : Module(producer.handles(), &parent), producer(producer), settings_(std::move(settings))
{}

PortIdentity Interface::port() const
{
    return {.id = settings_->id,
            .vendor = "Torvane",
            .model = settings_->name,
            .tlType = settings_->type,
            .module = "TLInterface",
            .version = "1.0.0",
            .portName = "TLInterface"};
}

bool Interface::isPlugged(const std::string &id) const
{
    const auto current = findInterface(producer.configuration(), settings_->id);
    if (!current)
        return false;
    // Mostly it stands where the list has it: a search of thousands for each open takes longer than the rest.
    const auto &plugged = current->cameras;
    const auto listed = indexes.find(id);
    if (listed != indexes.end() && listed->second < plugged.size() && plugged[listed->second]->id == id)
        return true;
    return std::ranges::any_of(plugged, [&](const auto &camera) { return camera->id == id; });
}

bool Interface::refresh()
{
    const CameraStates states = producer.store().load();
    const auto current = findInterface(producer.configuration(), settings_->id);
    const bool isAnyAway = std::ranges::any_of(states, isRebooting, &CameraStates::value_type::second);
    if (current && !isAnyAway && current->cameras == cameras_)
        return false; // the very same ones: with thousands of them, all below costs more than this look

    auto fresh = current ? current->cameras : std::vector<std::shared_ptr<const CameraSettings>>{};
    std::erase_if(fresh, [&](const auto &camera) { return isRebooting(stateOf(*camera, states)); });
    const bool hasChanged =
        !std::equal(cameras_.begin(), cameras_.end(), fresh.begin(), fresh.end(), hasSameId);
    cameras_ = std::move(fresh);
    indexes.clear();
    for (std::size_t index = 0; index < cameras_.size(); ++index)
        indexes.emplace(cameras_[index]->id, index);
    return hasChanged;
}

const std::shared_ptr<const CameraSettings> &Interface::find(const std::string &id) const
{
    if (const auto found = indexes.find(id); found != indexes.end())
        return cameras_[found->second];
    throw GenTLError(GC_ERR_INVALID_ID, "no camera \"" + id + "\" in the list");
}

DEVICE_ACCESS_STATUS Interface::accessStatus(const CameraSettings &camera) const
{
    if (camera.access != DEVICE_ACCESS_STATUS_READWRITE && camera.access != DEVICE_ACCESS_STATUS_READONLY)
        return camera.access;

    if (const auto open = opened.find(camera.id); open != opened.end()) {
        if (!producer.isAtLeast(1, 5))
            return DEVICE_ACCESS_STATUS_BUSY; // the statuses of open devices came with 1.5
        return open->second->canWrite() ? DEVICE_ACCESS_STATUS_OPEN_READWRITE
                                        : DEVICE_ACCESS_STATUS_OPEN_READONLY;
    }
    return producer.store().isHeld(camera.id) ? DEVICE_ACCESS_STATUS_BUSY : camera.access;
}

Device &Interface::open(const std::string &id, DEVICE_ACCESS_FLAGS access)
{
    const auto &camera = find(id);
    if (opened.contains(id))
        throw GenTLError(GC_ERR_RESOURCE_IN_USE, "camera \"" + id + "\" is open already");
    if (!isPlugged(id))
        throw GenTLError(GC_ERR_IO, "camera \"" + id + "\": unplugged");
    requireAccess(*camera, access);
    auto hold = producer.store().hold(id);
    if (!hold)
        throw GenTLError(GC_ERR_ACCESS_DENIED, "camera \"" + id + "\" is held by another process");
    auto device = std::make_unique<Device>(producer, *this, camera, access, std::move(hold));
    return *(opened[id] = std::move(device));
}

void Interface::close(Device &child)
{
    opened.erase(child.id());
}

void Interface::dropUnplugged()
{
    for (const auto &entry : opened) {
        Device &device = *entry.second;
        if (isPlugged(device.id()))
            continue;
        device.camera().loseContact("unplugged");
        device.reportLoss();
    }
}

} // namespace simulator
