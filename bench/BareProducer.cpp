// SPDX-License-Identifier: MIT
#include "BareProducer.h"

#include "Platform.h"

#include <algorithm>

namespace platform = GenICam_Interfaces::platform;

namespace {

// Registers of the simulated cameras.
constexpr std::uint64_t lockState = 0x50001000;
constexpr std::uint64_t passwordState = 0x50001004;
constexpr std::uint64_t command = 0x50001008;
constexpr std::uint64_t newPassword = 0x50002000;
constexpr std::uint64_t unlockPassword = 0x50002040;
constexpr std::uint64_t firmware = 0x88;
constexpr std::uint64_t macHigh = 0x8;
constexpr std::uint64_t macLow = 0xc;
constexpr std::uint64_t currentIp = 0x24;

} // namespace

template <class Pointer>
Pointer BareProducer::find(const char *name) const
{
    return reinterpret_cast<Pointer>(platform::findFunction(module, name));
}

BareProducer::BareProducer(const std::string &cti) : module(platform::loadModule(cti))
{
    INFO_DATATYPE type = INFO_DATATYPE_UNKNOWN;
    std::uint32_t version = 0;
    std::size_t size = sizeof version;
    GCInitLib();
    GCGetInfo(TL_INFO_GENTL_VER_MAJOR, &type, &version, &size);
    GCGetInfo(TL_INFO_GENTL_VER_MINOR, &type, &version, &size);
    GCCloseLib();
    GCInitLib();
}

BareProducer::~BareProducer()
{
    if (interface)
        IFClose(interface);
    if (tl)
        TLClose(tl);
    GCCloseLib();
    platform::releaseModule(module);
}

template <class Visitor>
std::size_t BareProducer::refresh(Visitor visit)
{
    constexpr std::uint64_t timeout = 200; // milliseconds
    std::uint32_t interfaces = 0;
    TLUpdateInterfaceList(tl, nullptr, timeout);
    TLGetNumInterfaces(tl, &interfaces);
    for (std::uint32_t i = 0; i < interfaces; ++i) {
        std::size_t size = sizeof text;
        TLGetInterfaceID(tl, i, text, &size);
    }
    if (!interface)
        TLOpenInterface(tl, text, &interface);
    std::uint32_t devices = 0;
    IFUpdateDeviceList(interface, nullptr, timeout);
    IFGetNumDevices(interface, &devices);
    std::size_t read = 0;
    for (std::uint32_t i = 0; i < devices; ++i) {
        std::size_t size = sizeof text;
        if (IFGetDeviceID(interface, i, text, &size) == GC_ERR_SUCCESS)
            ++read;
        visit(text);
    }
    return read;
}

std::size_t BareProducer::enumerate()
{
    return refresh([](const char *) {});
}

const std::vector<std::string> &BareProducer::list()
{
    ids.clear();
    refresh([this](const char *id) { ids.emplace_back(id); });
    return ids;
}

void BareProducer::probe(const char *id)
{
    ask(id, DEVICE_INFO_ACCESS_STATUS);
    PORT_HANDLE port = openDevice(id, DEVICE_ACCESS_READONLY);
    for (const std::uint64_t address : {lockState, lockState, passwordState})
        readRegister(port, address);
    INFO_DATATYPE type = INFO_DATATYPE_UNKNOWN;
    std::size_t size = sizeof text;
    DevGetInfo(device, DEVICE_INFO_TLTYPE, &type, text, &size);
    for (const std::uint64_t address : {currentIp, macHigh, macLow})
        readRegister(port, address);
    for (const std::uint64_t address : {lockState, passwordState}) // before the close, once more
        readRegister(port, address);
    DevClose(device);
}

void BareProducer::look(const char *id)
{
    PORT_HANDLE port = openDevice(id, DEVICE_ACCESS_READONLY);
    readRegister(port, lockState);
    readRegister(port, firmware, 32);
    for (const std::uint64_t address : {currentIp, macHigh, macLow, lockState, passwordState})
        readRegister(port, address);
    DevClose(device);
}

void BareProducer::change(const char *id, const std::string &old, const std::string &next)
{
    ask(id, DEVICE_INFO_ACCESS_STATUS);
    PORT_HANDLE port = openDevice(id, DEVICE_ACCESS_CONTROL);
    readRegister(port, lockState);
    readRegister(port, lockState);
    writePassword(port, unlockPassword, old);
    readRegister(port, lockState);
    writePassword(port, newPassword, next);
    lock(port);
    writePassword(port, unlockPassword, next);
    readRegister(port, lockState);
    lock(port);
    DevClose(device);
}

PORT_HANDLE BareProducer::openDevice(const char *id, DEVICE_ACCESS_FLAGS access)
{
    PORT_HANDLE port = nullptr;
    IFOpenDevice(interface, id, access, &device);
    DevGetPort(device, &port);
    readDescription(port);
    return port;
}

void BareProducer::readDescription(PORT_HANDLE port)
{
    INFO_DATATYPE type = INFO_DATATYPE_UNKNOWN;
    std::size_t size = sizeof text;
    for (const PORT_INFO_CMD access : {PORT_INFO_ACCESS_WRITE, PORT_INFO_ACCESS_READ})
        GCGetPortInfo(port, access, &type, text, &(size = sizeof text));
    std::uint64_t address = 0;
    std::uint64_t length = 0;
    GCGetPortURLInfo(port, 0, URL_INFO_URL, &type, text, &(size = sizeof text));
    GCGetPortURLInfo(port, 0, URL_INFO_SCHEME, &type, text, &(size = sizeof text));
    GCGetPortURLInfo(port, 0, URL_INFO_FILE_REGISTER_ADDRESS, &type, &address, &(size = sizeof address));
    GCGetPortURLInfo(port, 0, URL_INFO_FILE_SIZE, &type, &length, &(size = sizeof length));
    GCGetPortURLInfo(port, 0, URL_INFO_FILENAME, &type, text, &(size = sizeof text));
    description.resize(length);
    GCReadPort(port, address, description.data(), &(size = length));
    GCGetPortInfo(port, PORT_INFO_PORTNAME, &type, nullptr, &(size = 0));
    GCGetPortInfo(port, PORT_INFO_PORTNAME, &type, text, &size);
}

void BareProducer::readRegister(PORT_HANDLE port, std::uint64_t address, std::size_t size)
{
    GCReadPort(port, address, text, &size);
}

// Filled up with zeros to at least 8 bytes, a multiple of 4.
void BareProducer::writePassword(PORT_HANDLE port, std::uint64_t address, std::string password)
{
    password.resize(std::max<std::size_t>(8, (password.size() + 3) / 4 * 4), '\0');
    std::size_t size = password.size();
    GCWritePort(port, address, password.data(), &size);
}

void BareProducer::lock(PORT_HANDLE port)
{
    constexpr std::uint32_t lockCommand = 1;
    std::size_t size = sizeof lockCommand;
    GCWritePort(port, command, &lockCommand, &size);
    readRegister(port, lockState);
}

void BareProducer::ask(const char *id, DEVICE_INFO_CMD command)
{
    INFO_DATATYPE type = INFO_DATATYPE_UNKNOWN;
    std::size_t size = sizeof text;
    IFGetDeviceInfo(interface, id, command, &type, text, &size);
}
