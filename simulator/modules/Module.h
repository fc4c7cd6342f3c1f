// SPDX-License-Identifier: MIT
// What all modules of a producer have in common: a handle, a parent, a port and error events.
#pragma once

#include "Description.h"
#include "EventQueue.h"
#include "HandleTable.h"
#include "InfoValue.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace simulator {

/// What GCGetPortInfo tells of a port.
struct PortIdentity
{
    std::string id;
    std::string vendor;
    std::string model;
    std::string tlType;
    std::string module; ///< "TLSystem", "TLInterface", "TLDevice" or "Device"
    std::string version;
    std::string portName;
    bool isReadable = false; ///< neither readable nor writable: the port has no registers
    bool isWritable = false;
    bool isBigEndian = false;
};

class Module : public HandleObject
{
public:
    /// \param parent  outlives the module; null for the TL
    Module(HandleTable &table, Module *parent) : HandleObject(table), parent_(parent) {}

    Module *parent() const { return parent_; }

    /// The identifier by which its parent lists it; that of the camera for a device and its port.
    virtual std::string id() const = 0;

    virtual PortIdentity port() const = 0;

    /// The answer of GCGetPortInfo.
    /// \throws GenTLError  GC_ERR_INVALID_PARAMETER: unknown command
    InfoValue portInfo(PORT_INFO_CMD command) const;

    // Register access. The modules of the host have no registers: GC_ERR_NOT_IMPLEMENTED.
    virtual std::string read(std::uint64_t address, std::size_t size);
    virtual void write(std::uint64_t address, std::string_view bytes);

    /// The description behind the port, or null.
    virtual const Description *description() const { return nullptr; }

    /// The text that URL_INFO_URL answers; empty without a description.
    virtual std::string url() const { return {}; }

    /// \throws GenTLError  GC_ERR_RESOURCE_IN_USE: registered already
    EventRegistration &registerErrorEvent();
    /// \throws GenTLError  GC_ERR_INVALID_PARAMETER: not registered
    void unregisterErrorEvent();

    /// Fires an error event at this module and at those above it.
    void fireError(const ErrorEvent &event);

private:
    Module *parent_;
    std::unique_ptr<EventRegistration> errorEvent;
};

} // namespace simulator
