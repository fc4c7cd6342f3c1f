// SPDX-License-Identifier: MIT
// One GenTL interface (a network adapter, a USB host) of a producer, with the devices that it reports.
#pragma once

#include "RetiredObjects.h"
#include "Roster.h"

#include <atomic>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace GenICam_Interfaces {
class GenTL_Interface;
}
class Device;
class GenTLLibrary;
class InterfaceSession;

/// Thread: the one of the pass, but for handle() and session(), which any may ask; before the first and after the
/// last pass, the one that owns the BackEnd.
class TLInterface
{
public:
    /// \param parent  the library that reports the interface and deletes it; null gives one without a
    ///     producer
    /// \param id  GenTL's identifier, unique within the library
    TLInterface(GenTLLibrary *parent, std::string id);
    TLInterface(const TLInterface &) = delete;
    TLInterface &operator=(const TLInterface &) = delete;
    /// Deletes the devices, which closes the open ones, then closes the interface.
    ~TLInterface();

    /// Opens the interface; a failure is printed, and isOpen() tells.
    void open();
    /// Closes the interface if it is open; a failure is printed, and it counts as closed all the same. While a
    /// device holds a share of the session, the producer's close waits for that.
    void close();

    /// Brings the devices up to date with what the producer reports. Failures are printed. A new device is
    /// not opened; one that has gone is closed and moved to \p retired.
    void updateDeviceList(RetiredObjects &retired);

    /// Closes the devices and then the interface, whose library no longer reports it, and moves the devices
    /// to \p retired. Only the deletion is left.
    void retire(RetiredObjects &retired);

    /// In UTF-8, asked of the producer; a failure is printed and gives an empty text.
    std::string displayName() const;

    std::string id() const { return id_; }
    /// The identifier without a copy; valid as long as the object.
    std::string_view identifier() const { return id_; }
    std::vector<Device *> devices() const { return devices_; }
    Roster roster; // of the devices
    std::shared_ptr<GenICam_Interfaces::GenTL_Interface> gentl() const { return gentl_; }
    /// GenTL's IF_HANDLE; null while closed.
    void *handle() const { return ifHandle; }
    /// What keeps the interface open; null while closed.
    std::shared_ptr<const InterfaceSession> session() const { return session_; }
    bool isOpen() const { return ifOpen; }

private:
    GenTLLibrary *const library;
    const std::shared_ptr<GenICam_Interfaces::GenTL_Interface> gentl_;
    std::atomic<std::shared_ptr<const InterfaceSession>> session_;
    std::atomic<void *> ifHandle = nullptr; // IF_HANDLE, of the session: the passes ask for it often
    const std::string id_;
    std::vector<Device *> devices_; // owned, in order of first sight
    bool ifOpen = false;
};
