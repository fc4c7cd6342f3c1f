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

namespace {

constexpr const char *said = "text = \"no\"\n"; // what the producer says of an injected failure

std::string camera(const std::string &keys)
{
    return "[[interface]]\nid = \"sim-eth0\"\ntype = \"GEV\"\n[[interface.camera]]\nid = \"sim-1\"\n" + keys;
}

class DeviceTest : public BackEndTest
{};

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
    const struct
    {
        const char *type;
        TransportType expected;
    } rows[] = {{"U3V", TransportType::U3V},
                {"gev", TransportType::Other},
                {"CXP", TransportType::Other},
                {"GEV", TransportType::GEV}};
    for (const auto &row : rows) {
        backEnd = std::make_unique<BackEnd>();
        simulator.configure(camera(std::string("type = \"") + row.type + "\"\nip = \"10.0.0.1\"\n"));
        start();
        EXPECT_EQ(device()->transportType(), row.expected) << row.type;
        EXPECT_EQ(device()->ipAddress() != 0, row.expected == TransportType::GEV) << row.type;
    }
}

TEST_F(DeviceTest, AFeatureThatIsNoPlainIntegerIsNoAddress)
{
    simulator.configure(camera("xml = \"features.xml\"\n"));
    std::ofstream("features.xml") << R"(<RegisterDescription ModelName="m" VendorName="v">
        <Port Name="Device"/>
        <IntReg Name="GevMACAddress"><Address>0x50001000</Address><Length>4</Length><pPort>Device</pPort></IntReg>
        </RegisterDescription>)";
    EXPECT_EQ(start(), "ERROR: Could not open the remote device node 'GevCurrentIPAddress'!\n");
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
        backEnd = std::make_unique<BackEnd>();
        simulator.configure(camera(std::string("lock = \"locked\"\npassword = \"hunter22\"\naccess = \"") +
                                   row.access + "\"\n"));
        simulator.clearLog();
        EXPECT_EQ(start(), "") << row.access;
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
    start();
    backEnd->selectDevice(device());
    EXPECT_TRUE(device()->passwordSupported());
    EXPECT_FALSE(device()->readPasswordSupport());
    EXPECT_FALSE(device()->isLocked());
    EXPECT_FALSE(device()->isDefaultPassword());
}

TEST_F(DeviceTest, ADeviceWithoutTheLock)
{
    simulator.configure(camera("lock = \"none\"\n"));
    EXPECT_EQ(start(), "");
    EXPECT_FALSE(device()->passwordSupported());
    EXPECT_FALSE(device()->isLocked());
    EXPECT_FALSE(device()->isDefaultPassword());
    backEnd->selectDevice(device());
    simulator.clearLog();
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
    simulator.failNth("IFOpenDevice", -1005, 1, 0, said);
    const std::string expected =
        "ERROR: IFOpenDevice(DEVICE_ACCESS_CONTROL) for device with id 'sim-1' failed with "
        "code -1005!\n         Msg: no\n";
    EXPECT_EQ(start(), expected);
    EXPECT_EQ(ids(), std::vector<std::string>{"sim-1"}) << "it is in the list all the same";
    EXPECT_THAT(simulator.calls("DevGetInfo"), IsEmpty()) << "the probe ends with the failed open";
    EXPECT_EQ(printedBy([this] { backEnd->selectDevice(device()); }), expected);
    EXPECT_FALSE(device()->isOpen());
    EXPECT_TRUE(backEnd->selectedPasswordHistory().empty());
    EXPECT_FALSE(backEnd->selectedIsLocked())
        << "it stays selected: unsupported answers false, none selected true";
}

// The creation of the port and the read of the lock state still run, on the closed device with no port
// handle.
TEST_F(DeviceTest, AFailedDevGetPortGoesOn)
{
    start();
    simulator.failNth("DevGetPort", -1001, 1, 1, said);
    pass(); // reads the configuration
    simulator.clearLog();
    const std::string printed = printedBy([this] { backEnd->selectDevice(device()); });
    EXPECT_THAT(printed,
                StartsWith("ERROR: DevGetPort() failed with code -1001!\n         Msg: no\n"
                           "Password protection not available!\n"
                           "ERROR: Creating GenTL_PortInterface instance for the remote device failed! "
                           "Closing device...\n       Msg: GCGetPortInfo(PORT_INFO_ACCESS_WRITE) failed "
                           "with code -1006! Message: "));
    EXPECT_THAT(functionsOf(simulator.calls()),
                ElementsAre("IFOpenDevice", "DevGetPort", "GCGetLastError", "GCReadPort", "GCGetLastError",
                            "GCReadPort", "GCGetLastError", "DevClose", "GCGetPortInfo", "GCGetLastError",
                            "GCReadPort", "GCGetLastError"))
        << "the reads are the cache refresh of the close and the support read, all through the port of the "
           "probe";
    EXPECT_FALSE(device()->isOpen());
    EXPECT_FALSE(device()->passwordSupported());
}

TEST_F(DeviceTest, AProbeWithoutAPortGoesOnToTheTransportInfo)
{
    simulator.failNth("GCReadPort", -1010, 1, 1, said); // of the description
    const std::string printed = start();
    EXPECT_THAT(printed,
                StartsWith("ERROR: Creating GenTL_PortInterface instance for the remote device failed! "
                           "Closing device...\n       Msg: GCReadPort failed with code -1010! Message: no \n"
                           "ERROR: IFGetDeviceInfo(DEVICE_INFO_TLTYPE,sim-1) failed with code -1006!\n"
                           "         Msg: "));
    EXPECT_EQ(simulator.calls("DevClose").size(), 1u);
    EXPECT_THAT(simulator.portTraffic(), IsEmpty()) << "a read without a port is a failed read";
    EXPECT_FALSE(device()->passwordSupported());
    EXPECT_EQ(device()->transportType(), TransportType::Unknown);
}

TEST_F(DeviceTest, ADescriptionThatCannotBeUsed)
{
    simulator.configure(camera("port_name = \"Elsewhere\"\n"));
    std::string printed = start();
    EXPECT_THAT(printed,
                StartsWith("ERROR: Creating GenTL_PortInterface instance for the remote device failed! "
                           "Closing device...\n       Msg: Connecting NodeMapRef with port failed!\n"));

    backEnd = std::make_unique<BackEnd>();
    simulator.configure(camera("xml = \"ports.xml\"\n"));
    std::ofstream("ports.xml") << R"(<RegisterDescription ModelName="m" VendorName="v"><Port Name="Device"/>
        <Port Name="Device"/></RegisterDescription>)";
    printed = start();
    EXPECT_THAT(printed,
                StartsWith("ERROR: Creating GenTL_PortInterface instance for the remote device failed! "
                           "Closing device...\n       Msg: "));
    EXPECT_THAT(printed, HasSubstr("'Device'")) << "GenApi's family, in its words";
    EXPECT_EQ(simulator.openHandles(), 2);
}

TEST_F(DeviceTest, AFailedTransportQueryNamesTheQueryOfTheInterface)
{
    simulator.failNth("DevGetInfo", -1001, 1, 1, said);
    EXPECT_EQ(start(), "ERROR: IFGetDeviceInfo(DEVICE_INFO_TLTYPE,sim-1) failed with code -1001!\n"
                       "         Msg: no\n");
    EXPECT_EQ(device()->transportType(), TransportType::Unknown);
    EXPECT_TRUE(device()->isLocked()) << "the rest of the probe is remembered";
}

TEST_F(DeviceTest, AnExceptionOutOfAProbeIsReportedAndThePassGoesOn)
{
    simulator.configure(camera("xml = \"loop.xml\"\n") + "[[interface.camera]]\nid = \"sim-2\"\n");
    std::ofstream("loop.xml") << R"(<RegisterDescription ModelName="m" VendorName="v"><Port Name="Device"/>
        <Integer Name="GevCurrentIPAddress"><pValue>GevCurrentIPAddress</pValue></Integer>
        </RegisterDescription>)";
    std::string printed = start();
    EXPECT_THAT(printed, StartsWith("ERROR: Probing device 'sim-1' failed!\n       Msg: "));
    EXPECT_THAT(printed, HasSubstr("GevCurrentIPAddress")) << "GenApi's family";
    EXPECT_EQ(ids(), (std::vector<std::string>{"sim-1", "sim-2"}));
    EXPECT_EQ(device(0)->transportType(), TransportType::GEV) << "as far as it is known";
    EXPECT_EQ(device(1)->transportType(), TransportType::GEV);
    EXPECT_EQ(simulator.openHandles(), 2);

    end();
    backEnd = std::make_unique<BackEnd>();
    simulator.configure(camera(""));
    // Four reads come before: the description, the lock state for the support, lock state and password state.
    simulator.failNth("GCReadPort", -1011, 5, 1, said);
    simulator.clearLog();
    printed = start();
    EXPECT_EQ(printed, "ERROR: Probing device 'sim-1' failed!\n"
                       "       Msg: GCReadPort failed with code -1011! Message: no \n");
    EXPECT_THAT(functionsOf(simulator.calls()).back(), "DevClose")
        << "closed without being asked anything more";
}

TEST_F(DeviceTest, AFailedDevCloseCountsAsClosed)
{
    simulator.failNth("DevClose", -1010, 1, 1, said);
    EXPECT_EQ(start(), "WARNING: DevClose() failed with code -1010!\n         Msg: no\n");
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

    simulator.failNth("IFGetDeviceInfo", -1001, 1, 0, said);
    pass();
    const auto line = [](const std::string &query) {
        return "ERROR: IFGetDeviceInfo(" + query + ",sim-1) failed with code -1001!\n         Msg: no\n";
    };
    const auto isEmptyAfter = [&](auto query, const std::string &name) {
        std::string text = "unset";
        EXPECT_EQ(printedBy([&] { text = (device()->*query)(); }), line(name));
        EXPECT_EQ(text, "");
    };
    isEmptyAfter(&Device::model, "DEVICE_INFO_MODEL");
    isEmptyAfter(&Device::tlType, "DEVICE_INFO_TLTYPE");
    isEmptyAfter(&Device::displayName, "DEVICE_INFO_DISPLAYNAME");
    isEmptyAfter(&Device::serialNumber, "DEVICE_INFO_SERIAL_NUMBER");
    std::int32_t status = -1;
    EXPECT_EQ(printedBy([&] { status = device()->accessStatus(); }), line("DEVICE_INFO_ACCESS_STATUS"));
    EXPECT_EQ(status, 0);
    EXPECT_EQ(printedBy([this] {
                  try {
                      device()->userDefinedName();
                      ADD_FAILURE() << "alone of its family it throws";
                  } catch (const std::runtime_error &failure) {
                      EXPECT_STREQ(failure.what(),
                                   "ERROR: IFGetDeviceInfo(DEVICE_INFO_USER_DEFINED_NAME,sim-1) "
                                   "failed with code -1001!");
                  }
              }),
              "");
}

TEST_F(DeviceTest, AProducerThatCannotSayMore)
{
    start();
    simulator.failNth("IFGetDeviceInfo", -1001, 1, 1);
    simulator.failNth("GCGetLastError", -1016, 1, 1);
    pass();
    EXPECT_EQ(printedBy([this] { device()->model(); }),
              "ERROR: IFGetDeviceInfo(DEVICE_INFO_MODEL,sim-1) failed with code -1001!\n"
              "WARNING: Inquiring last error failed with code -1016!\n");
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
