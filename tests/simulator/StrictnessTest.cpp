// SPDX-License-Identifier: MIT
// Each misuse of the interface has a code and a text of its own.
#include "Client.h"

namespace {

class StrictnessTest : public OpenCameraTest
{
protected:
    /// "-1004 the TL is open already": the code of a refused call, and the text of the last error.
    std::string refusal(GC_ERROR code) const { return std::to_string(code) + ' ' + client.lastError(); }

    /// That of a read of the camera's lock state.
    std::string readRefusal()
    {
        client.read(camera.port, lockState, 4);
        return refusal(client.code);
    }

    void *handle = nullptr;
    char buffer[4] = "";
    INFO_DATATYPE type = 0;
    std::size_t size = sizeof buffer;
};

constexpr char notInitialized[] = "-1002 GCInitLib has not been called";
constexpr char wrongHandle[] = "-1006 not a handle of this kind, or closed";

TEST_F(StrictnessTest, TheLibraryIsInitializedOnce)
{
    EXPECT_EQ(refusal(client.GCInitLib()), "-1004 the library is initialized already");
    client.close();
    EXPECT_EQ(refusal(client.GCGetInfo(TL_INFO_ID, &type, nullptr, &size)), notInitialized);
    EXPECT_EQ(readRefusal(), notInitialized);
    EXPECT_EQ(refusal(client.GCCloseLib()), notInitialized);
    client.init();
    EXPECT_EQ(refusal(client.TLUpdateInterfaceList(camera.tl, nullptr, 0)), wrongHandle);
}

TEST_F(StrictnessTest, WhatIsOpenOrUnknownIsNotOpened)
{
    EXPECT_EQ(refusal(client.TLOpen(&handle)), "-1004 the TL is open already");
    EXPECT_EQ(refusal(client.TLOpenInterface(camera.tl, "sim-eth0", &handle)),
              "-1004 interface \"sim-eth0\" is open already");
    EXPECT_EQ(refusal(client.IFOpenDevice(camera.interface, "sim-1", DEVICE_ACCESS_READONLY, &handle)),
              "-1004 camera \"sim-1\" is open already");
    EXPECT_EQ(refusal(client.TLOpenInterface(camera.tl, "eth9", &handle)),
              "-1007 no interface \"eth9\" in the list");
    EXPECT_EQ(refusal(client.IFOpenDevice(camera.interface, "sim-9", DEVICE_ACCESS_READONLY, &handle)),
              "-1007 no camera \"sim-9\" in the list");
    EXPECT_EQ(refusal(client.TLOpen(nullptr)), "-1009 the pointer to the handle is null");
    EXPECT_EQ(refusal(client.TLOpenInterface(camera.tl, nullptr, &handle)), "-1009 the identifier is null");
    client.DevClose(camera.device);
    EXPECT_EQ(refusal(client.IFOpenDevice(camera.interface, "sim-1", DEVICE_ACCESS_NONE, &handle)),
              "-1009 no access to open with: 1");
}

TEST_F(StrictnessTest, HandlesEndWithTheirModuleAndThoseAbove)
{
    EXPECT_EQ(refusal(client.TLClose(nullptr)), "-1006 the handle is null");
    EXPECT_EQ(refusal(client.IFClose(camera.device)), wrongHandle);
    EXPECT_EQ(refusal(client.DSClose(camera.device)), "-1006 not a data stream: the cameras have none");

    client.DevClose(camera.device);
    EXPECT_EQ(readRefusal(), wrongHandle);
    camera.port = client.port(client.openDevice(camera.interface, "sim-1", DEVICE_ACCESS_READONLY));
    EXPECT_EQ(refusal(client.write(camera.port, unlockPassword, "hunter22")),
              "-1005 camera \"sim-1\" was opened read-only");
    EXPECT_EQ(refusal(client.DevClose(camera.device)), wrongHandle);
    client.TLClose(camera.tl);
    EXPECT_EQ(readRefusal(), wrongHandle);
}

TEST_F(StrictnessTest, ArgumentsMustFit)
{
    EXPECT_EQ(refusal(client.IFGetDeviceID(camera.interface, 1, buffer, &size)),
              "-1017 no camera 1 in the list");
    EXPECT_EQ(refusal(client.IFGetDeviceID(camera.interface, 0, buffer, &size)),
              "-1016 the buffer has 4 bytes; 6 are needed");
    EXPECT_EQ(refusal(client.GCGetPortURLInfo(camera.port, 1, URL_INFO_URL, &type, nullptr, &size)),
              "-1017 the port has no URL 1");
    EXPECT_EQ(refusal(client.DevGetInfo(camera.device, 77, &type, nullptr, &size)),
              "-1009 unknown device query 77");
    client.read(camera.device, 0, 4);
    EXPECT_EQ(refusal(client.code), "-1003 this module has no registers");
}

} // namespace
