// SPDX-License-Identifier: MIT
// Each misuse of the interface has a code and a text of its own.
#include "Client.h"
#include "Simulator.h"

#include <gtest/gtest.h>

namespace {

class StrictnessTest : public testing::Test
{
protected:
    void expectRefused(GC_ERROR code, GC_ERROR expected, const char *text) const
    {
        EXPECT_EQ(code, expected) << text;
        EXPECT_EQ(client.lastError(), text);
    }

    /// The code of a read of the camera's lock state.
    GC_ERROR readPort()
    {
        client.read(camera.port, lockState, 4);
        return client.code;
    }

    Simulator simulator;
    Client client{Simulator::cti()};
    OpenCamera camera{client};
    void *handle = nullptr;
    char buffer[4] = "";
    INFO_DATATYPE type = 0;
    std::size_t size = sizeof buffer;
};

constexpr char notInitialized[] = "GCInitLib has not been called";
constexpr char wrongHandle[] = "not a handle of this kind, or closed";

TEST_F(StrictnessTest, TheLibraryIsInitializedOnce)
{
    expectRefused(client.call<PGCInitLib>("GCInitLib")(), GC_ERR_RESOURCE_IN_USE,
                  "the library is initialized already");
    client.close();
    expectRefused(client.call<PGCGetInfo>("GCGetInfo")(TL_INFO_ID, &type, nullptr, &size),
                  GC_ERR_NOT_INITIALIZED, notInitialized);
    expectRefused(readPort(), GC_ERR_NOT_INITIALIZED, notInitialized);
    expectRefused(client.call<PGCCloseLib>("GCCloseLib")(), GC_ERR_NOT_INITIALIZED, notInitialized);
    client.init();
    expectRefused(client.call<PTLUpdateInterfaceList>("TLUpdateInterfaceList")(camera.tl, nullptr, 0),
                  GC_ERR_INVALID_HANDLE, wrongHandle);
}

TEST_F(StrictnessTest, WhatIsOpenOrUnknownIsNotOpened)
{
    const auto openTL = client.call<PTLOpen>("TLOpen");
    const auto openInterface = client.call<PTLOpenInterface>("TLOpenInterface");
    const auto openDevice = client.call<PIFOpenDevice>("IFOpenDevice");
    expectRefused(openTL(&handle), GC_ERR_RESOURCE_IN_USE, "the TL is open already");
    expectRefused(openInterface(camera.tl, "sim-eth0", &handle), GC_ERR_RESOURCE_IN_USE,
                  "interface \"sim-eth0\" is open already");
    expectRefused(openDevice(camera.interface, "sim-1", DEVICE_ACCESS_READONLY, &handle),
                  GC_ERR_RESOURCE_IN_USE, "camera \"sim-1\" is open already");
    expectRefused(openInterface(camera.tl, "eth9", &handle), GC_ERR_INVALID_ID,
                  "no interface \"eth9\" in the list");
    expectRefused(openDevice(camera.interface, "sim-9", DEVICE_ACCESS_READONLY, &handle), GC_ERR_INVALID_ID,
                  "no camera \"sim-9\" in the list");
    expectRefused(client.call<PDevOpenDataStream>("DevOpenDataStream")(camera.device, "0", &handle),
                  GC_ERR_INVALID_ID, "the camera has no data streams");
    expectRefused(openTL(nullptr), GC_ERR_INVALID_PARAMETER, "the pointer to the handle is null");
    expectRefused(openInterface(camera.tl, nullptr, &handle), GC_ERR_INVALID_PARAMETER,
                  "the identifier is null");
    client.call<PDevClose>("DevClose")(camera.device);
    expectRefused(openDevice(camera.interface, "sim-1", DEVICE_ACCESS_NONE, &handle),
                  GC_ERR_INVALID_PARAMETER, "no access to open with: 1");
}

TEST_F(StrictnessTest, HandlesEndWithTheirModuleAndThoseAbove)
{
    const auto closeDevice = client.call<PDevClose>("DevClose");
    expectRefused(client.call<PTLClose>("TLClose")(nullptr), GC_ERR_INVALID_HANDLE, "the handle is null");
    expectRefused(client.call<PIFClose>("IFClose")(camera.device), GC_ERR_INVALID_HANDLE, wrongHandle);
    expectRefused(client.call<PDSClose>("DSClose")(camera.device), GC_ERR_INVALID_HANDLE,
                  "not a data stream: the cameras have none");

    closeDevice(camera.device);
    expectRefused(readPort(), GC_ERR_INVALID_HANDLE, wrongHandle);
    camera.port = client.port(client.openDevice(camera.interface));
    expectRefused(closeDevice(camera.device), GC_ERR_INVALID_HANDLE, wrongHandle);
    client.call<PTLClose>("TLClose")(camera.tl);
    expectRefused(readPort(), GC_ERR_INVALID_HANDLE, wrongHandle);
}

TEST_F(StrictnessTest, ArgumentsMustFit)
{
    const auto deviceId = client.call<PIFGetDeviceID>("IFGetDeviceID");
    const auto deviceInfo = client.call<PDevGetInfo>("DevGetInfo");
    expectRefused(deviceId(camera.interface, 1, buffer, &size), GC_ERR_INVALID_INDEX,
                  "no camera 1 in the list");
    expectRefused(deviceId(camera.interface, 0, buffer, &size), GC_ERR_BUFFER_TOO_SMALL,
                  "the buffer has 4 bytes; 6 are needed");
    expectRefused(client.call<PGCGetPortURLInfo>("GCGetPortURLInfo")(camera.port, 1, URL_INFO_URL, &type,
                                                                     nullptr, &size),
                  GC_ERR_INVALID_INDEX, "the port has no URL 1");
    expectRefused(deviceInfo(camera.device, 77, &type, nullptr, &size), GC_ERR_INVALID_PARAMETER,
                  "unknown device query 77");
    expectRefused(deviceInfo(camera.device, DEVICE_INFO_ID, &type, nullptr, nullptr),
                  GC_ERR_INVALID_PARAMETER, "the pointer to the size is null");
    client.read(camera.device, 0, 4);
    expectRefused(client.code, GC_ERR_NOT_IMPLEMENTED, "this module has no registers");
}

TEST_F(StrictnessTest, AReadOnlyOpenDoesNotWrite)
{
    client.call<PDevClose>("DevClose")(camera.device);
    const PORT_HANDLE port =
        client.port(client.openDevice(camera.interface, "sim-1", DEVICE_ACCESS_READONLY));
    expectRefused(client.write(port, unlockPassword, "hunter22"), GC_ERR_ACCESS_DENIED,
                  "camera \"sim-1\" was opened read-only");
}

} // namespace
