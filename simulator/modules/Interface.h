// SPDX-License-Identifier: MIT
// An open interface: the list of cameras as of its last refresh, and those that are open.
#pragma once

#include "CameraState.h"
#include "Configuration.h"
#include "Device.h"
#include "Module.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace simulator {

class Producer;
class TransportLayer;

class Interface : public Module
{
public:
    /// \param producer, parent  outlive the module
    Interface(Producer &producer, TransportLayer &parent, std::shared_ptr<const InterfaceSettings> settings);

    std::string id() const override { return settings_->id; }
    PortIdentity port() const override;
    const InterfaceSettings &settings() const { return *settings_; }

    /// Takes the cameras of the configuration that don't reboot.
    /// \returns whether the list has changed
    /// \throws GenTLError  as CameraStore::load(); the list stays
    bool refresh();

    const std::vector<std::shared_ptr<const CameraSettings>> &cameras() const { return cameras_; }

    /// \throws GenTLError  GC_ERR_INVALID_ID: not in the list
    const std::shared_ptr<const CameraSettings> &find(const std::string &id) const;

    /// What DEVICE_INFO_ACCESS_STATUS answers.
    DEVICE_ACCESS_STATUS accessStatus(const CameraSettings &camera) const;

    /// \throws GenTLError  as find(); GC_ERR_RESOURCE_IN_USE: open already; GC_ERR_ACCESS_DENIED: held by
    ///     another process, or the camera doesn't give this access; GC_ERR_IO: it reboots
    Device &open(const std::string &id, DEVICE_ACCESS_FLAGS access);
    void close(Device &child);

    /// Cuts the contact to open cameras that the configuration no longer has.
    void dropUnplugged();

private:
    bool isPlugged(const std::string &id) const;

    Producer &producer;
    std::shared_ptr<const InterfaceSettings> settings_;
    std::vector<std::shared_ptr<const CameraSettings>> cameras_;
    std::unordered_map<std::string_view, std::size_t> indexes; // in cameras_, by identifier
    std::map<std::string, std::unique_ptr<Device>> opened;
};

} // namespace simulator
