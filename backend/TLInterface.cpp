// SPDX-License-Identifier: MIT
#include "TLInterface.h"

#include "ConsoleIO.h"
#include "Device.h"
#include "GenTL.h"
#include "GenTLLibrary.h"
#include "GenTL_Interface.h"
#include "InterfaceSession.h"
#include "LastError.h"
#include "Reconciliation.h"
#include "TextBuffer.h"

#include <utility>

namespace {

// The devices of one interface, for reconcile.
struct DeviceLevel
{
    static constexpr const char *updateFailure = "ERROR: IFUpdateDeviceList() failed with code ";
    static constexpr const char *countFailure = "ERROR: IFGetNumDevices() failed with code ";
    static constexpr const char *countRefusal = "ERROR: IFGetNumDevices() delivered ";
    static constexpr const char *identifierFailure = "ERROR: IFGetDeviceID(";
    static constexpr bool clearsEachTime = true;

    GC_ERROR update(bool8_t *changed, std::uint64_t timeout)
    {
        return gentl->IFUpdateDeviceList(parent->handle(), changed, timeout);
    }
    GC_ERROR count(std::uint32_t *number) { return gentl->IFGetNumDevices(parent->handle(), number); }
    GC_ERROR identifier(std::uint32_t index, char *buffer, std::size_t *size)
    {
        return gentl->IFGetDeviceID(parent->handle(), index, buffer, size);
    }
    Device *create(std::string id) { return new Device(parent, std::move(id)); }
    void destroy(Device *device)
    {
        device->retire();
        retired.emplace_back(device);
    }

    TLInterface *parent;
    std::shared_ptr<GenICam_Interfaces::GenTL_Interface> gentl;
    Roster &roster;
    RetiredObjects &retired;
};

} // namespace

TLInterface::TLInterface(GenTLLibrary *parent, std::string id)
    : library(parent), gentl_(parent ? parent->gentl() : nullptr), id_(std::move(id))
{}

TLInterface::~TLInterface()
{
    for (Device *device : devices_)
        delete device;
    devices_.clear();
    close();
}

void TLInterface::open()
{
    if (!gentl_)
        return;
    IF_HANDLE handle = nullptr;
    const GC_ERROR code = gentl_->TLOpenInterface(library->tlHandle(), id_.c_str(), &handle);
    if (code != GC_ERR_SUCCESS) {
        console::printLine("ERROR: TLOpenInterface() failed with code ", code, "!");
        reportLastError(gentl_);
        return;
    }
    session_ = std::make_shared<const InterfaceSession>(gentl_, handle);
    ifHandle = handle;
    ifOpen = true;
}

void TLInterface::close()
{
    ifHandle = nullptr;
    ifOpen = false;
    session_.store(nullptr); // the last share closes it
}

void TLInterface::updateDeviceList(RetiredObjects &retired)
{
    if (!gentl_)
        return;
    reconcile(devices_, DeviceLevel{this, gentl_, roster, retired});
}

void TLInterface::retire(RetiredObjects &retired)
{
    for (Device *device : devices_) {
        device->retire();
        retired.emplace_back(device);
    }
    devices_.clear();
    close();
}

std::string TLInterface::displayName() const
{
    if (!gentl_)
        return {};
    TextBuffer name;
    INFO_DATATYPE type = INFO_DATATYPE_UNKNOWN;
    std::size_t size = TextBuffer::size();
    const GC_ERROR code = gentl_->IFGetInfo(ifHandle, INTERFACE_INFO_DISPLAYNAME, &type, name.data(), &size);
    if (code != GC_ERR_SUCCESS) {
        console::printLine("ERROR: IFGetInfo(INTERFACE_INFO_DISPLAYNAME) failed with code ", code, "!");
        reportLastError(gentl_);
        return {};
    }
    return std::string(name.text());
}
