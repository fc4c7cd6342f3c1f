// SPDX-License-Identifier: MIT
#include "Device.h"

#include "Interface.h"
#include "Producer.h"

namespace simulator {

namespace {

constexpr std::uint64_t timestampFrequency = 1'000'000'000; // ticks a second

/// What the port of the camera and that of its local module have in common.
PortIdentity identityOf(const CameraSettings &camera)
{
    PortIdentity identity;
    identity.id = camera.id;
    identity.vendor = camera.vendor;
    identity.model = camera.model;
    identity.tlType = camera.type;
    identity.version = camera.firmware;
    identity.isBigEndian = camera.type == "GEV";
    return identity;
}

std::string displayName(const CameraSettings &camera)
{
    return camera.userName.empty() ? camera.model + " (" + camera.serial + ')' : camera.userName;
}

} // namespace

RemotePort::RemotePort(HandleTable &table, Device &device) : Module(table, &device), device(device) {}

std::string RemotePort::id() const
{
    return device.id();
}

PortIdentity RemotePort::port() const
{
    const CameraSettings &settings = device.camera().settings();
    PortIdentity identity = identityOf(settings);
    identity.module = "Device";
    identity.portName = settings.portName;
    identity.isReadable = true;
    identity.isWritable = device.canWrite();
    return identity;
}

std::string RemotePort::read(std::uint64_t address, std::size_t size)
{
    return device.camera().read(address, size);
}

void RemotePort::write(std::uint64_t address, std::string_view bytes)
{
    if (!device.canWrite())
        throw GenTLError(GC_ERR_ACCESS_DENIED, "camera \"" + id() + "\" was opened read-only");
    device.camera().write(address, bytes);
    device.reportLoss(); // a factory reset
}

const Description *RemotePort::description() const
{
    return &device.camera().description();
}

std::string RemotePort::url() const
{
    return device.camera().settings().url.value_or(urlOf(*description()));
}

Device::Device(Producer &producer, Interface &parent, const std::shared_ptr<const CameraSettings> &settings,
               DEVICE_ACCESS_FLAGS access, std::unique_ptr<CameraHold> hold)
    : Module(producer.handles(), &parent),
      access(access),
      hold(std::move(hold)),
      camera_(settings, producer.store())
{}

PortIdentity Device::port() const
{
    PortIdentity identity = identityOf(camera_.settings());
    identity.module = "TLDevice";
    identity.portName = "TLDevice";
    return identity;
}

RemotePort &Device::remotePort()
{
    if (!remotePort_)
        remotePort_.emplace(table(), *this);
    return *remotePort_;
}

void Device::reportLoss()
{
    if (isLossReported || camera_.whyLost().empty())
        return;
    isLossReported = true;
    fireError({GC_ERR_IO, "camera \"" + id() + "\": " + camera_.whyLost()});
}

InfoValue deviceInfo(DEVICE_INFO_CMD command, const CameraSettings &camera, const Interface &interface)
{
    switch (command) {
    case DEVICE_INFO_ID:
        return InfoValue::text(camera.id);
    case DEVICE_INFO_VENDOR:
        return InfoValue::text(camera.vendor);
    case DEVICE_INFO_MODEL:
        return InfoValue::text(camera.model);
    case DEVICE_INFO_TLTYPE:
        return InfoValue::text(camera.type);
    case DEVICE_INFO_DISPLAYNAME:
        return InfoValue::text(displayName(camera));
    case DEVICE_INFO_ACCESS_STATUS:
        return InfoValue::int32(interface.accessStatus(camera));
    case DEVICE_INFO_USER_DEFINED_NAME:
        return InfoValue::text(camera.userName);
    case DEVICE_INFO_SERIAL_NUMBER:
        return InfoValue::text(camera.serial);
    case DEVICE_INFO_VERSION:
        return InfoValue::text(camera.firmware);
    case DEVICE_INFO_TIMESTAMP_FREQUENCY:
        return InfoValue::uint64(timestampFrequency);
    default:
        throw GenTLError(GC_ERR_INVALID_PARAMETER, "unknown device query " + std::to_string(command));
    }
}

} // namespace simulator
