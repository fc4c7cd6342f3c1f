// SPDX-License-Identifier: MIT
// A device from first contact to its end: the calls in their order, what is remembered, and each failure's
// lines.
#include "AccessStatus.h"
#include "BackEndFixture.h"

#include <gmock/gmock.h>

#include <fstream>
#include <stdexcept>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testing::ThrowsMessage;

namespace {

const std::string portFailed = "ERROR: Creating GenTL_PortInterface instance for the remote device failed! "
                               "Closing device...\n       Msg: ";

class DeviceTest : public BackEndTest
{
protected:
    /// Starts with a camera of a description of its own, and others behind it.
    std::string startDescribed(const std::string &nodes, const std::string &others = "")
    {
        std::ofstream("own.xml")
            << "<RegisterDescription ModelName=\"m\" VendorName=\"v\"><Port Name=\"Device\"/>" << nodes
            << "</RegisterDescription>";
        return startWith(camera("xml = \"own.xml\"\n") + others);
    }
};

TEST_F(DeviceTest, FirstContactReadsFiveRegistersAndRemembers)
{
    EXPECT_EQ(start(), "");
    EXPECT_THAT(simulator.portTraffic(),
                ElementsAre("read 0x50001000 01 00 00 00", "read 0x50001000 01 00 00 00",
                            "read 0x50001004 01 00 00 00", "read 0x50001000 01 00 00 00",
                            "read 0x50001004 01 00 00 00"));
    EXPECT_THAT(simulator.calls("IFOpenDevice"), ElementsAre(HasSubstr("\"sim-1\", 2)")));
    EXPECT_FALSE(device()->isOpen());
    EXPECT_TRUE(device()->passwordSupported());
    EXPECT_TRUE(device()->isLocked());
    EXPECT_FALSE(device()->isDefaultPassword());
    EXPECT_EQ(device()->transportType(), TransportType::GEV);
    EXPECT_EQ(device()->ipAddress(), 0xc0a8000bu); // 192.168.0.11
    EXPECT_EQ(device()->macAddress(), 0x001122334401u);
    EXPECT_EQ(simulator.portTraffic().size(), 5u) << "a closed device answers from what it remembers";
    EXPECT_EQ(simulator.openHandles(), 2) << "TL and interface";
}

TEST_F(DeviceTest, TransportTypes)
{
    const std::pair<const char *, TransportType> rows[] = {{"U3V", TransportType::U3V},
                                                           {"gev", TransportType::Other},
                                                           {"CXP", TransportType::Other},
                                                           {"GEV", TransportType::GEV}};
    for (const auto &[type, expected] : rows) {
        startWith(camera(std::string("description = \"zipped\"\ntype = \"") + type + "\"\n"));
        EXPECT_EQ(device()->transportType(), expected) << type;
        EXPECT_EQ(device()->ipAddress() != 0, expected == TransportType::GEV) << type;
    }
}

TEST_F(DeviceTest, AFeatureThatIsNoPlainIntegerIsNoAddress)
{
    EXPECT_EQ(startDescribed("<IntReg Name=\"GevMACAddress\"><Address>0x50001000</Address><Length>4</Length>"
                             "<pPort>Device</pPort></IntReg>"),
              "ERROR: Could not open the remote device node 'GevCurrentIPAddress'!\n");
    EXPECT_EQ(device()->ipAddress(), 0u);
    EXPECT_EQ(device()->macAddress(), 0x8000000000000000u);
}

TEST_F(DeviceTest, OnlyAccessibleDevicesAreProbed)
{
    const struct
    {
        const char *access;
        std::int32_t status;
        const char *name;
        bool probed;
    } rows[] = {{"readwrite", 1, "ReadWrite", true},
                {"readonly", 2, "ReadOnly", true},
                {"noaccess", 3, "NoAccess", false},
                {"busy", 4, "Busy", false},
                {"open_readwrite", 5, "OpenReadWrite", false},
                {"open_readonly", 6, "OpenReadOnly", false},
                {"unknown", 0, "Unknown", false}};
    for (const auto &row : rows) {
        EXPECT_EQ(startWith(camera(std::string("lock = \"locked\"\naccess = \"") + row.access + "\"\n")), "");
        EXPECT_EQ(device()->accessStatus(), row.status);
        EXPECT_EQ(accessStatusName(row.status), row.name);
        EXPECT_EQ(!simulator.calls("IFOpenDevice").empty(), row.probed) << row.access;
        EXPECT_EQ(device()->isLocked(), row.probed) << row.access;
        EXPECT_EQ(device()->transportType(), row.probed ? TransportType::GEV : TransportType::Unknown);
    }
    EXPECT_EQ(accessStatusName(7), "Unimplemented item");
}

TEST_F(DeviceTest, OpenAndClose)
{
    start();
    simulator.clearLog();
    backEnd->selectDevice(device());
    EXPECT_TRUE(device()->isOpen());
    EXPECT_THAT(simulator.calls("IFOpenDevice"), ElementsAre(HasSubstr("\"sim-1\", 3)")));
    EXPECT_THAT(simulator.portTraffic(), ElementsAre("read 0x50001000 01 00 00 00"));

    simulator.clearLog();
    device()->open();
    device()->probe();
    EXPECT_THAT(simulator.calls(), IsEmpty()) << "an open device is not opened again";

    device()->close(false);
    EXPECT_THAT(functionsOf(simulator.calls()), ElementsAre("GCReadPort", "GCReadPort", "DevClose"));
    EXPECT_FALSE(device()->isOpen());
    device()->close(false);
    EXPECT_THAT(simulator.calls("DevClose").size(), 1u) << "the second close does nothing";

    device()->open();
    EXPECT_TRUE(device()->isOpen());
    simulator.clearLog();
    device()->close(true);
    EXPECT_THAT(functionsOf(simulator.calls()), ElementsAre("DevClose"));
}

// Only 1 is locked, and only 0 the factory password.
TEST_F(DeviceTest, OtherValuesInTheStateRegisters)
{
    simulator.configure(camera("lock_state_value = 2\npassword_state_value = 7\n"));
    select();
    EXPECT_TRUE(device()->passwordSupported());
    EXPECT_FALSE(device()->readPasswordSupport());
    EXPECT_FALSE(device()->isLocked());
    EXPECT_FALSE(device()->isDefaultPassword());
}

TEST_F(DeviceTest, ADeviceWithoutTheLock)
{
    simulator.configure(camera("lock = \"none\"\n"));
    select();
    EXPECT_FALSE(device()->passwordSupported());
    EXPECT_FALSE(device()->isLocked());
    EXPECT_FALSE(device()->isDefaultPassword());
    EXPECT_EQ(printedBy([this] {
                  device()->lock();
                  device()->unlock("hunter22");
                  device()->setPassword("hunter22");
                  device()->factoryReset();
              }),
              "");
    EXPECT_THAT(simulator.calls(), IsEmpty());
}

TEST_F(DeviceTest, AFailedOpenNamesControlAccessAlsoInAProbe)
{
    fail("IFOpenDevice", 1, 0);
    const std::string expected = failed("IFOpenDevice(DEVICE_ACCESS_CONTROL) for device with id 'sim-1'");
    EXPECT_EQ(start(), expected);
    EXPECT_EQ(ids(), std::vector<std::string>{"sim-1"}) << "it is in the list all the same";
    EXPECT_THAT(simulator.calls("DevGetInfo"), IsEmpty()) << "the probe ends with the failed open";
    EXPECT_EQ(printedBy([this] { backEnd->selectDevice(device()); }), expected);
    EXPECT_FALSE(device()->isOpen());
    EXPECT_FALSE(backEnd->selectedIsLocked())
        << "it stays selected: unsupported answers false, none selected true";
}

// The creation of the port and the read of the lock state still run, on the closed device with no port
// handle.
TEST_F(DeviceTest, AFailedDevGetPortGoesOn)
{
    start();
    fail("DevGetPort");
    pass(); // reads the configuration
    simulator.clearLog();
    EXPECT_THAT(printedBy([this] { backEnd->selectDevice(device()); }),
                StartsWith(failed("DevGetPort()") + "Password protection not available!\n" + portFailed +
                           "GCGetPortInfo(PORT_INFO_ACCESS_WRITE) failed with code -1006! Message: "));
    EXPECT_THAT(functionsOf(simulator.calls()),
                ElementsAre("IFOpenDevice", "DevGetPort", "GCGetLastError", "DevClose", "GCGetPortInfo",
                            "GCGetLastError"))
        << "the cache refresh of the close and the support read fail: the port of the probe is closed";
    EXPECT_FALSE(device()->isOpen());
    EXPECT_FALSE(device()->passwordSupported());
}

TEST_F(DeviceTest, AProbeWithoutAPortGoesOnToTheTransportInfo)
{
    fail("GCReadPort"); // of the description
    EXPECT_THAT(start(),
                StartsWith(portFailed +
                           "GCReadPort failed with code -1010! Message: no \n"
                           "ERROR: IFGetDeviceInfo(DEVICE_INFO_TLTYPE,sim-1) failed with code -1006!\n"
                           "         Msg: "));
    EXPECT_EQ(simulator.calls("DevClose").size(), 1u);
    EXPECT_THAT(simulator.portTraffic(), IsEmpty()) << "a read without a port is a failed read";
    EXPECT_FALSE(device()->passwordSupported());
    EXPECT_EQ(device()->transportType(), TransportType::Unknown);
}

TEST_F(DeviceTest, ADescriptionThatCannotBeUsed)
{
    const std::string printed = startDescribed("<Port Name=\"Device\"/>");
    EXPECT_THAT(printed, StartsWith(portFailed));
    EXPECT_THAT(printed, HasSubstr("'Device'")) << "GenApi's family, in its words";
    EXPECT_EQ(simulator.openHandles(), 2);
}

TEST_F(DeviceTest, AFailedTransportQueryNamesTheQueryOfTheInterface)
{
    fail("DevGetInfo");
    EXPECT_EQ(start(), failed("IFGetDeviceInfo(DEVICE_INFO_TLTYPE,sim-1)"));
    EXPECT_EQ(device()->transportType(), TransportType::Unknown);
    EXPECT_TRUE(device()->isLocked()) << "the rest of the probe is remembered";
}

TEST_F(DeviceTest, AnExceptionOutOfAProbeIsReportedAndThePassGoesOn)
{
    const std::string probeFailed = "ERROR: Probing device 'sim-1' failed!\n       Msg: ";
    const std::string printed =
        startDescribed("<Integer Name=\"GevCurrentIPAddress\"><pValue>GevCurrentIPAddress</pValue></Integer>",
                       "[[interface.camera]]\nid = \"sim-2\"\n");
    EXPECT_THAT(printed, StartsWith(probeFailed));
    EXPECT_THAT(printed, HasSubstr("GevCurrentIPAddress")) << "GenApi's family";
    EXPECT_EQ(ids(), (std::vector<std::string>{"sim-1", "sim-2"}));
    EXPECT_EQ(device(0)->transportType(), TransportType::GEV) << "as far as it is known";
    EXPECT_EQ(device(1)->transportType(), TransportType::GEV);
    EXPECT_EQ(simulator.openHandles(), 2);

    backEnd = std::make_unique<BackEnd>();
    simulator.configure(camera(""));
    // Four reads come before: the description, the lock state for the support, lock state and password state.
    fail("GCReadPort", 5);
    EXPECT_EQ(start(), probeFailed + "GCReadPort failed with code -1010! Message: no \n");
    EXPECT_EQ(functionsOf(simulator.calls()).back(), "DevClose")
        << "closed without being asked anything more";
}

TEST_F(DeviceTest, AFailedDevCloseCountsAsClosed)
{
    fail("DevClose");
    EXPECT_EQ(start(), failed("DevClose()", "WARNING"));
    EXPECT_FALSE(device()->isOpen());
}

TEST_F(DeviceTest, TextQueries)
{
    start();
    EXPECT_EQ(device()->model(), "SimCam G5");
    EXPECT_EQ(device()->serialNumber(), "G5-0001");
    EXPECT_EQ(device()->tlType(), "GEV");
    device()->displayName();
    EXPECT_THAT(simulator.calls("IFGetDeviceInfo").back(), HasSubstr("\"sim-1\", 4)"));

    fail("IFGetDeviceInfo", 1, 0);
    pass();
    const auto expectEmpty = [&](auto query, const std::string &name) {
        EXPECT_EQ(printedBy([&] { EXPECT_EQ((device()->*query)(), ""); }),
                  failed("IFGetDeviceInfo(" + name + ",sim-1)"));
    };
    expectEmpty(&Device::model, "DEVICE_INFO_MODEL");
    expectEmpty(&Device::tlType, "DEVICE_INFO_TLTYPE");
    expectEmpty(&Device::displayName, "DEVICE_INFO_DISPLAYNAME");
    expectEmpty(&Device::serialNumber, "DEVICE_INFO_SERIAL_NUMBER");
    EXPECT_EQ(printedBy([this] { EXPECT_EQ(device()->accessStatus(), 0); }),
              failed("IFGetDeviceInfo(DEVICE_INFO_ACCESS_STATUS,sim-1)"));
    const auto userDefinedName = [this] { device()->userDefinedName(); };
    EXPECT_EQ(printedBy([&] {
                  EXPECT_THAT(userDefinedName,
                              ThrowsMessage<std::runtime_error>(
                                  "ERROR: IFGetDeviceInfo(DEVICE_INFO_USER_DEFINED_NAME,sim-1) failed with "
                                  "code -1010!"))
                      << "alone of its family";
              }),
              "");
}

TEST_F(DeviceTest, AProducerThatCannotSayMore)
{
    start();
    fail("IFGetDeviceInfo");
    fail("GCGetLastError");
    pass();
    EXPECT_EQ(printedBy([this] { device()->model(); }),
              "ERROR: IFGetDeviceInfo(DEVICE_INFO_MODEL,sim-1) failed with code -1010!\n"
              "WARNING: Inquiring last error failed with code -1010!\n");
}

TEST_F(DeviceTest, AnEmptyIdentifierSwitchesTheDeviceOff)
{
    Device off(nullptr, "");
    EXPECT_EQ(printedBy([&] {
                  off.probe();
                  off.open();
                  off.close(false);
                  off.lock();
                  off.factoryReset();
                  EXPECT_FALSE(off.readPasswordSupport());
              }),
              "");
    EXPECT_EQ(off.accessStatus(), 0);
    EXPECT_EQ(off.model() + off.serialNumber() + off.userDefinedName() + off.displayName() + off.tlType(),
              "");
    EXPECT_FALSE(off.isLocked());
    EXPECT_FALSE(off.isOpen());
}

} // namespace
