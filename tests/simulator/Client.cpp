// SPDX-License-Identifier: MIT
#include "Client.h"

#include "LoadedModule.h"

#include <cstdio>
#include <stdexcept>

Client::Client(const std::string &cti) : module(testsystem::loadModule(cti)) {}

Client::~Client()
{
    testsystem::unloadModule(module);
}

void *Client::symbol(const char *name) const
{
    return testsystem::findSymbol(module, name);
}

std::string Client::lastError() const
{
    GC_ERROR lastCode = 0;
    char text[1100] = "";
    std::size_t size = sizeof text;
    GCGetLastError(&lastCode, text, &size);
    return text;
}

TL_HANDLE Client::openTL()
{
    TL_HANDLE tl = nullptr;
    code = TLOpen(&tl);
    if (code == GC_ERR_SUCCESS)
        code = TLUpdateInterfaceList(tl, nullptr, 1000);
    return tl;
}

IF_HANDLE Client::openInterface(TL_HANDLE tl, const char *id)
{
    IF_HANDLE interface = nullptr;
    code = TLOpenInterface(tl, id, &interface);
    if (code == GC_ERR_SUCCESS)
        code = IFUpdateDeviceList(interface, nullptr, 1000);
    return interface;
}

DEV_HANDLE Client::openDevice(IF_HANDLE interface, const char *id, DEVICE_ACCESS_FLAGS access)
{
    DEV_HANDLE device = nullptr;
    code = IFOpenDevice(interface, id, access, &device);
    return device;
}

PORT_HANDLE Client::port(DEV_HANDLE device)
{
    PORT_HANDLE result = nullptr;
    code = DevGetPort(device, &result);
    return result;
}

std::vector<std::string> Client::devices(IF_HANDLE interface)
{
    std::vector<std::string> ids;
    code = IFUpdateDeviceList(interface, nullptr, 1000);
    std::uint32_t count = 0;
    IFGetNumDevices(interface, &count);
    for (std::uint32_t index = 0; index < count; ++index) {
        char id[256] = "";
        std::size_t size = sizeof id;
        IFGetDeviceID(interface, index, id, &size);
        ids.emplace_back(id);
    }
    return ids;
}

std::int32_t Client::accessStatus(IF_HANDLE interface, const char *id)
{
    std::int32_t status = -1;
    query(IFGetDeviceInfo, interface, id, DEVICE_INFO_ACCESS_STATUS)
        .copy(reinterpret_cast<char *>(&status), sizeof status);
    return status;
}

std::string Client::readBytes(PORT_HANDLE port, std::uint64_t address, std::size_t size)
{
    std::string bytes(size, '?');
    code = GCReadPort(port, address, bytes.data(), &size);
    return code == GC_ERR_SUCCESS ? bytes : "";
}

std::string Client::read(PORT_HANDLE port, std::uint64_t address, std::size_t size)
{
    std::string text;
    for (const char byte : readBytes(port, address, size)) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%s%02x", text.empty() ? "" : " ",
                      static_cast<unsigned char>(byte));
        text += digits;
    }
    return text;
}

GC_ERROR Client::write(PORT_HANDLE port, std::uint64_t address, std::string_view bytes)
{
    std::size_t size = bytes.size();
    return code = GCWritePort(port, address, bytes.data(), &size);
}

OpenCamera::OpenCamera(Client &client, const char *id, DEVICE_ACCESS_FLAGS access)
{
    client.init();
    tl = client.openTL();
    interface = client.openInterface(tl);
    device = client.openDevice(interface, id, access);
    port = client.port(device);
    if (client.code != GC_ERR_SUCCESS)
        throw std::runtime_error(client.lastError());
}
