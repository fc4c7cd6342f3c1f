// SPDX-License-Identifier: MIT
// The connection of a device: probing, opening and closing. The order of the calls is part of the behaviour,
// also where a step runs on a device that an earlier one has closed.
#include "Device.h"

#include "ConsoleIO.h"
#include "GenTL.h"
#include "GenTL_Interface.h"
#include "GenTL_PortInterface.h"
#include "GenericException.h"
#include "InterfaceSession.h"
#include "LastError.h"
#include "RemoteNode.h"
#include "TLInterface.h"
#include "TextBuffer.h"
#include "Wipe.h"

#include <stdexcept>
#include <utility>

using GenICam_3_2_TVN::GenericException;
using GenICam_Interfaces::GenTL_PortInterface;

namespace {

void printPortFailure(const char *text)
{
    console::printLine(
        "ERROR: Creating GenTL_PortInterface instance for the remote device failed! Closing device...");
    console::printLine("       Msg: ", text);
}

} // namespace

Device::Device(TLInterface *owner, std::string id)
    : interfaceOwner(owner), gentl(owner ? owner->gentl() : nullptr), id_(std::move(id))
{}

Device::~Device()
{
    if (isOpen_)
        closeHandle();
    for (std::string &password : passwordHistory_)
        wipe(password);
}

bool Device::tryToHold(Holder newHolder)
{
    Holder nobody = Holder::Nobody;
    return holder.compare_exchange_strong(nobody, newHolder);
}

void Device::releaseFromUser()
{
    Holder user = Holder::User;
    holder.compare_exchange_strong(user, Holder::Nobody);
}

void Device::probe()
{
    if (isOff() || !tryToHold(Holder::Probe))
        return;
    ++probes_;
    try {
        probeHeld();
    } catch (...) {
        closeHandle();
        holder = Holder::Nobody;
        throw;
    }
    holder = Holder::Nobody;
}

void Device::probeHeld()
{
    const std::int32_t status = accessStatus();
    if (status != DEVICE_ACCESS_STATUS_READWRITE && status != DEVICE_ACCESS_STATUS_READONLY)
        return;
    if (openWith(DEVICE_ACCESS_READONLY) != GC_ERR_SUCCESS)
        return;
    refreshCache();
    readTransportInfo();
    closeConnection(false);
}

void Device::open()
{
    openForUser(DEVICE_ACCESS_CONTROL);
}

std::int32_t Device::openForUser(std::int32_t accessFlags)
{
    if (isOff() || !tryToHold(Holder::User))
        return GC_ERR_RESOURCE_IN_USE;
    const GC_ERROR code = openWith(accessFlags);
    if (!isOpen_)
        releaseFromUser();
    return code;
}

// Returns the code of IFOpenDevice. What fails behind it closes the device, but the steps go on: the
// creation of the port reports for itself, and the read of the lock state settles passwordSupported in every
// case.
std::int32_t Device::openWith(std::int32_t accessFlags)
{
    auto interfaceSession = interfaceOwner->session();
    if (!interfaceSession) // its interface has just vanished, and the device with it
        return GC_ERR_INVALID_HANDLE;
    DEV_HANDLE handle = nullptr;
    GC_ERROR code = gentl->IFOpenDevice(interfaceSession->handle(), id_.c_str(), accessFlags, &handle);
    if (code != GC_ERR_SUCCESS) {
        // Names the control access for a probe too.
        console::printLine("ERROR: IFOpenDevice(DEVICE_ACCESS_CONTROL) for device with id '", id_,
                           "' failed with code ", code, "!");
        reportLastError(gentl);
        return code;
    }
    session = std::move(interfaceSession);
    devHandle = handle;
    isOpen_ = true;
    if (retired) { // it vanished meanwhile, and nobody else would close it
        closeHandle();
        return GC_ERR_INVALID_HANDLE;
    }

    PORT_HANDLE portHandle = nullptr;
    code = gentl->DevGetPort(handle, &portHandle);
    remotePortHandle = portHandle;
    if (code != GC_ERR_SUCCESS) {
        console::printLine("ERROR: DevGetPort() failed with code ", code, "!");
        reportLastError(gentl);
        closeConnection(false);
    }
    createPort();
    readPasswordSupport();
    return GC_ERR_SUCCESS;
}

void Device::createPort()
{
    try {
        PORT_HANDLE portHandle = remotePortHandle;
        const auto created = std::make_shared<GenTL_PortInterface>(portHandle, gentl, 0);
        port = created;
        if (!isOpen_) // closed before or meanwhile
            created->disconnect();
    } catch (const std::exception &failure) {
        printPortFailure(failure.what());
        closeConnection(false);
    } catch (const GenericException &failure) {
        printPortFailure(failure.GetDescription());
        closeConnection(false);
    }
}

void Device::refreshCache()
{
    cachedLocked = isLocked();
    cachedDefault = isDefaultPassword();
}

void Device::readTransportInfo()
{
    if (isOff())
        return;
    TextBuffer type;
    INFO_DATATYPE dataType = INFO_DATATYPE_UNKNOWN;
    std::size_t size = TextBuffer::size();
    const GC_ERROR code = gentl->DevGetInfo(devHandle, DEVICE_INFO_TLTYPE, &dataType, type.data(), &size);
    if (code != GC_ERR_SUCCESS) {
        // Names the query of the interface for the one of the device.
        console::printLine("ERROR: IFGetDeviceInfo(DEVICE_INFO_TLTYPE,", id_, ") failed with code ", code,
                           "!");
        reportLastError(gentl);
        transportType_ = TransportType::Unknown;
        return;
    }
    if (type.text() == "GEV") {
        transportType_ = TransportType::GEV;
        ipAddress_ = static_cast<std::uint32_t>(remoteNode("GevCurrentIPAddress").valueAsInteger());
        macAddress_ = static_cast<std::uint64_t>(remoteNode("GevMACAddress").valueAsInteger());
    } else if (type.text() == "U3V") {
        transportType_ = TransportType::U3V;
    } else {
        transportType_ = TransportType::Other;
    }
}

void Device::close(bool skipCacheRefresh)
{
    if (isOff() || holder != Holder::User)
        return;
    closeConnection(skipCacheRefresh);
    releaseFromUser();
}

void Device::closeConnection(bool skipCacheRefresh)
{
    if (isOpen_ && !skipCacheRefresh)
        refreshCache();
    closeHandle();
}

void Device::retire()
{
    retired = true; // first: an open that is under way then closes what it opens
    closeHandle();
}

// A device can vanish while the window closes it: whoever takes the open flag makes the one DevClose, and clears the
// handles, which are null while the device is closed. The share of the interface goes last.
void Device::closeHandle()
{
    if (!isOpen_.exchange(false))
        return;
    const auto interfaceSession = std::move(session);
    if (const auto present = port.load())
        present->disconnect();
    remotePortHandle = nullptr;
    const GC_ERROR code = gentl->DevClose(devHandle.exchange(nullptr));
    if (code != GC_ERR_SUCCESS)
        reportFailedClose(gentl, "WARNING: DevClose() failed with code ", code);
}

RemoteNode Device::remoteNode(const std::string &name) const
{
    if (isOff())
        return RemoteNode(nullptr);
    return RemoteNode(port, name);
}
