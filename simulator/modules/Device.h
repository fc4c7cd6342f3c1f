// SPDX-License-Identifier: MIT
// An open camera: the local device module, and the remote port through which its registers are reached.
#pragma once

#include "Camera.h"
#include "CameraStore.h"
#include "Module.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

class Device;
class Interface;
class Producer;

/// The port of the camera itself, from DevGetPort.
class RemotePort : public Module
{
public:
    RemotePort(HandleTable &table, Device &device);

    std::string id() const override;
    PortIdentity port() const override;
    std::string read(std::uint64_t address, std::size_t size) override;
    void write(std::uint64_t address, std::string_view bytes) override;
    const Description *description() const override;
    std::string url() const override;

private:
    Device &device;
};

class Device : public Module
{
public:
    /// \param producer, parent  outlive the module
    /// \throws GenTLError  as Camera's constructor
    Device(Producer &producer, Interface &parent, const std::shared_ptr<const CameraSettings> &settings,
           DEVICE_ACCESS_FLAGS access, std::unique_ptr<CameraHold> hold);

    std::string id() const override { return camera_.settings().id; }
    PortIdentity port() const override;

    bool canWrite() const { return access != DEVICE_ACCESS_READONLY; }
    Camera &camera() { return camera_; }
    const Camera &camera() const { return camera_; }

    /// The one remote port, made at the first call.
    RemotePort &remotePort();

    /// Fires an error event, once, when the camera has gone.
    void reportLoss();

private:
    DEVICE_ACCESS_FLAGS access;
    std::unique_ptr<CameraHold> hold;
    Camera camera_;
    std::optional<RemotePort> remotePort_;
    bool isLossReported = false;
};

/// The answer of IFGetDeviceInfo and DevGetInfo.
/// \throws GenTLError  GC_ERR_INVALID_PARAMETER: unknown command
InfoValue deviceInfo(DEVICE_INFO_CMD command, const CameraSettings &camera, const Interface &interface);

} // namespace simulator
