// SPDX-License-Identifier: MIT
// The binding over the simulated cameras: a producer that is as strict as the standard lets it be.
#include "GenTL_Interface.h"
#include "GenTL_PortInterface.h"
#include "IInteger.h"
#include "INode.h"
#include "IString.h"
#include "Simulator.h"

#include <gmock/gmock.h>

using namespace GenICam_Interfaces;
using namespace GenApi_3_2_TVN;
using ::testing::ElementsAre;

namespace {

class SimulatedCameraTest : public ::testing::TestWithParam<const char *>
{
protected:
    /// Opens the camera read-only and gives its port.
    PORT_HANDLE openCamera() const
    {
        TL_HANDLE tl = nullptr;
        IF_HANDLE interface = nullptr;
        DEV_HANDLE device = nullptr;
        PORT_HANDLE port = nullptr;
        EXPECT_EQ(gentl->GCInitLib(), GC_ERR_SUCCESS);
        EXPECT_EQ(gentl->TLOpen(&tl), GC_ERR_SUCCESS);
        EXPECT_EQ(gentl->TLUpdateInterfaceList(tl, nullptr, 1000), GC_ERR_SUCCESS);
        EXPECT_EQ(gentl->TLOpenInterface(tl, "eth0", &interface), GC_ERR_SUCCESS);
        EXPECT_EQ(gentl->IFUpdateDeviceList(interface, nullptr, 1000), GC_ERR_SUCCESS);
        EXPECT_EQ(gentl->IFOpenDevice(interface, "cam", DEVICE_ACCESS_READONLY, &device), GC_ERR_SUCCESS);
        EXPECT_EQ(gentl->DevGetPort(device, &port), GC_ERR_SUCCESS);
        return port;
    }

    const Simulator simulator{std::string(R"(
[[interface]]
id = "eth0"
type = "GEV"
[[interface.camera]]
id = "cam"
ip = "192.168.0.11"
firmware = "4.5.6"
lock = "locked"
password = "hunter22"
description = ")") + GetParam() +
                              "\"\n"};
    const std::shared_ptr<GenTL_Interface> gentl = std::make_shared<GenTL_Interface>(Simulator::cti());
};

TEST_P(SimulatedCameraTest, ShowsItsFeaturesAndLockThroughThePort)
{
    GenTL_PortInterface port(openCamera(), gentl, 0);
    EXPECT_EQ(port.getPortName(), "Device");
    auto *firmware = dynamic_cast<IString *>(port.getNode("DeviceFirmwareVersion"));
    ASSERT_NE(firmware, nullptr);
    EXPECT_STREQ(firmware->GetValue().c_str(), "4.5.6");
    auto *address = dynamic_cast<IInteger *>(port.getNode("GevCurrentIPAddress"));
    ASSERT_NE(address, nullptr);
    EXPECT_EQ(address->GetValue(), 0xC0A8000B);

    std::int32_t lockState = 0;
    port.Read(&lockState, 0x50001000, sizeof lockState);
    EXPECT_THAT(simulator.portTraffic(), ElementsAre("read 0x50001000 01 00 00 00"));
    EXPECT_EQ(gentl->GCCloseLib(), GC_ERR_SUCCESS);
}

INSTANTIATE_TEST_SUITE_P(Descriptions, SimulatedCameraTest, ::testing::Values("plain", "zipped"),
                         [](const auto &row) { return std::string(row.param); });

} // namespace
