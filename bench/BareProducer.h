// SPDX-License-Identifier: MIT
// The baseline of whatever goes through a producer: its functions, called directly, with the arguments of the back end
// and in its order. No result is looked at but what the next call needs.
#pragma once

#include "GenTL.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// A session with one producer, without error handling: whoever measures proves with the producer's call log that the
/// calls are those of the back end, and that they succeed.
class BareProducer
{
public:
    /// Loads the module \p cti, asks it for its version and initialises it.
    explicit BareProducer(const std::string &cti);
    BareProducer(const BareProducer &) = delete;
    BareProducer &operator=(const BareProducer &) = delete;
    /// Closes what is open, and the module.
    ~BareProducer();

    void open() { TLOpen(&tl); }

    /// One refresh of all lists, with the cameras of one interface, the last, which the first refresh opens.
    /// \return how many cameras there are
    std::size_t enumerate();
    /// The same, with the identifiers kept for what follows.
    const std::vector<std::string> &list();

    /// Opens \p id for reading, with its description, its lock and its addresses, and closes it.
    void probe(const char *id);

    /// Opens \p id for reading, asks what a fleet program's list tells of it, and closes it.
    void look(const char *id);
    /// Opens \p id, which is locked, for control, gives it another password as a fleet program does, and closes it.
    void change(const char *id, const std::string &old, const std::string &next);

    /// Asks for one value of \p id through the interface; texts as they are.
    void ask(const char *id, DEVICE_INFO_CMD command);
    /// The value of the last call of ask().
    const char *answer() const { return text; }

private:
    template <class Pointer>
    Pointer find(const char *name) const;
    /// Opens it with its port and its description.
    PORT_HANDLE openDevice(const char *id, DEVICE_ACCESS_FLAGS access);
    void readDescription(PORT_HANDLE port);
    void readRegister(PORT_HANDLE port, std::uint64_t address, std::size_t size = 4);
    void writePassword(PORT_HANDLE port, std::uint64_t address, std::string password);
    void lock(PORT_HANDLE port);
    template <class Visitor>
    std::size_t refresh(Visitor visit);

    void *const module;
    const PGCInitLib GCInitLib = find<PGCInitLib>("GCInitLib");
    const PGCCloseLib GCCloseLib = find<PGCCloseLib>("GCCloseLib");
    const PGCGetInfo GCGetInfo = find<PGCGetInfo>("GCGetInfo");
    const PGCReadPort GCReadPort = find<PGCReadPort>("GCReadPort");
    const PGCWritePort GCWritePort = find<PGCWritePort>("GCWritePort");
    const PGCGetPortInfo GCGetPortInfo = find<PGCGetPortInfo>("GCGetPortInfo");
    const PGCGetPortURLInfo GCGetPortURLInfo = find<PGCGetPortURLInfo>("GCGetPortURLInfo");
    const PTLOpen TLOpen = find<PTLOpen>("TLOpen");
    const PTLClose TLClose = find<PTLClose>("TLClose");
    const PTLUpdateInterfaceList TLUpdateInterfaceList =
        find<PTLUpdateInterfaceList>("TLUpdateInterfaceList");
    const PTLGetNumInterfaces TLGetNumInterfaces = find<PTLGetNumInterfaces>("TLGetNumInterfaces");
    const PTLGetInterfaceID TLGetInterfaceID = find<PTLGetInterfaceID>("TLGetInterfaceID");
    const PTLOpenInterface TLOpenInterface = find<PTLOpenInterface>("TLOpenInterface");
    const PIFClose IFClose = find<PIFClose>("IFClose");
    const PIFUpdateDeviceList IFUpdateDeviceList = find<PIFUpdateDeviceList>("IFUpdateDeviceList");
    const PIFGetNumDevices IFGetNumDevices = find<PIFGetNumDevices>("IFGetNumDevices");
    const PIFGetDeviceID IFGetDeviceID = find<PIFGetDeviceID>("IFGetDeviceID");
    const PIFGetDeviceInfo IFGetDeviceInfo = find<PIFGetDeviceInfo>("IFGetDeviceInfo");
    const PIFOpenDevice IFOpenDevice = find<PIFOpenDevice>("IFOpenDevice");
    const PDevGetPort DevGetPort = find<PDevGetPort>("DevGetPort");
    const PDevGetInfo DevGetInfo = find<PDevGetInfo>("DevGetInfo");
    const PDevClose DevClose = find<PDevClose>("DevClose");
    TL_HANDLE tl = nullptr;
    IF_HANDLE interface = nullptr;
    DEV_HANDLE device = nullptr;
    std::vector<std::string> ids;
    std::vector<char> description;
    char text[256] = {};
};
