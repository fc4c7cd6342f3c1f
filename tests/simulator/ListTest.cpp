// SPDX-License-Identifier: MIT
// The lists of interfaces and cameras: what stands in them, and that they change by a refresh and by nothing
// else.
#include "Client.h"

#include <gmock/gmock.h>

#include <chrono>

namespace {

constexpr char empty[] = "[[interface]]\nid = \"sim-eth0\"\n";
constexpr char secondCamera[] = "[[interface.camera]]\nid = \"sim-2\"\n";

class ListTest : public OpenCameraTest
{
protected:
    bool refreshChanges()
    {
        bool8_t changed = 2;
        client.code = client.IFUpdateDeviceList(camera.interface, &changed, 1000);
        EXPECT_LE(changed, 1);
        return changed;
    }

    std::uint32_t count() const
    {
        std::uint32_t result = 99;
        client.IFGetNumDevices(camera.interface, &result);
        return result;
    }
};

TEST_F(ListTest, TheStatusTellsHowThisProcessHasOpenedACamera)
{
    EXPECT_EQ(client.accessStatus(camera.interface), DEVICE_ACCESS_STATUS_OPEN_READWRITE);
    client.DevClose(camera.device);
    EXPECT_EQ(client.accessStatus(camera.interface), DEVICE_ACCESS_STATUS_READWRITE);
    client.openDevice(camera.interface, "sim-1", DEVICE_ACCESS_READONLY);
    EXPECT_EQ(client.accessStatus(camera.interface), DEVICE_ACCESS_STATUS_OPEN_READONLY);

    simulator.configure("[producer]\nversion = \"1.4\"\n" + std::string(Simulator::oneCamera));
    refreshChanges();
    EXPECT_EQ(client.accessStatus(camera.interface), DEVICE_ACCESS_STATUS_BUSY)
        << "1.4 doesn't know the others";
}

TEST_F(ListTest, PluggingAndUnpluggingShowAtTheNextRefreshAndNotBefore)
{
    EXPECT_FALSE(refreshChanges());
    simulator.configure(std::string(Simulator::oneCamera) + secondCamera);
    EXPECT_EQ(count(), 1u);
    EXPECT_TRUE(refreshChanges());
    EXPECT_FALSE(refreshChanges());
    EXPECT_THAT(client.devices(camera.interface), testing::ElementsAre("sim-1", "sim-2"));
    EXPECT_EQ(client.read(camera.port, lockState, 4), "01 00 00 00") << "an open camera has lost contact";

    simulator.configure(empty);
    EXPECT_EQ(client.accessStatus(camera.interface, "sim-2"), DEVICE_ACCESS_STATUS_READWRITE)
        << "before the refresh";
    EXPECT_TRUE(refreshChanges());
    EXPECT_THAT(client.devices(camera.interface), testing::IsEmpty());
    EXPECT_EQ(client.accessStatus(camera.interface, "sim-2"), -1) << "behind the refresh";
    EXPECT_EQ(client.read(camera.port, lockState, 4), "");
    EXPECT_EQ(client.lastError(), "camera \"sim-1\": unplugged");
}

TEST_F(ListTest, ARefreshThatTakesLongerThanItMayTimesOutAndChangesNothing)
{
    simulator.configure("[producer]\nupdate_ms = 150\n" + std::string(empty));
    refreshChanges();
    simulator.configure("[producer]\nupdate_ms = 150\n" + std::string(Simulator::oneCamera));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(client.IFUpdateDeviceList(camera.interface, nullptr, 20), GC_ERR_TIMEOUT);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(140));
    EXPECT_EQ(count(), 0u);
    EXPECT_TRUE(refreshChanges());
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(170));
}

TEST_F(ListTest, EveryModuleIsAPortAndNamesItsParent)
{
    void *parent = nullptr;
    client.DevGetParentIF(camera.device, &parent);
    EXPECT_EQ(parent, camera.interface);
    client.IFGetParentTL(camera.interface, &parent);
    EXPECT_EQ(parent, camera.tl);
    EXPECT_EQ(client.port(camera.device), camera.port) << "a device has one port";

    const auto answer = [&](PORT_HANDLE port, PORT_INFO_CMD command) {
        return client.query(client.GCGetPortInfo, port, command);
    };
    std::string answers; // name; read, write, NA, NI
    for (const PORT_HANDLE port : {camera.tl, camera.interface, camera.device, camera.port}) {
        answers += answer(port, PORT_INFO_PORTNAME).c_str();
        for (PORT_INFO_CMD command = PORT_INFO_ACCESS_READ; command <= PORT_INFO_ACCESS_NI; ++command)
            answers += answer(port, command) == "\1" ? '1' : '0';
        answers += ' ';
    }
    EXPECT_EQ(answers, "TLSystem0001 TLInterface0001 TLDevice0001 Device1100 ");
}

} // namespace
