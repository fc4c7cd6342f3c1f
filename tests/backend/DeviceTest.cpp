// SPDX-License-Identifier: MIT
// A device from first contact to its end: the calls in their order, what is remembered, and each failure's
// lines.
#include "AccessStatus.h"
#include "BackEndFixture.h"

#include <gmock/gmock.h>

#include <stdexcept>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::string portFailed = "ERROR: Creating GenTL_PortInterface instance for the remote device failed! "
                               "Closing device...\n       Msg: ";

const std::string probeFailed = "ERROR: Probing device 'sim-1' failed!\n       Msg: ";

class DeviceTest : public BackEndTest
{
protected:
    /// What a device tells of itself without an answer of its producer.
    static std::string stateOf(const Device &device)
    {
        const char *const types[] = {"GEV", "U3V", "?", "?", "Other", "Unknown"};
        std::string text = types[static_cast<int>(device.transportType())];
        text += device.isOpen() ? " open" : "";
        text += device.passwordSupported() ? "" : " without a lock";
        text += device.isLocked() ? " locked" : "";
        return text + (device.isDefaultPassword() ? " default" : "");
    }
};

TEST_F(DeviceTest, FirstContactReadsFiveRegistersAndRemembers)
{
    EXPECT_EQ(start(), "");
    EXPECT_THAT(simulator.calls("IFOpenDevice"), ElementsAre(HasSubstr("\"sim-1\", 2)")));
    EXPECT_EQ(stateOf(*device()), "GEV locked");
    EXPECT_EQ(device()->ipAddress(), 0xc0a8000bu); // 192.168.0.11
    EXPECT_EQ(device()->macAddress(), 0x001122334401u);
    EXPECT_EQ(simulator.lockTraffic(), "locked locked user locked user") << "as it was: this is remembered";
    EXPECT_EQ(simulator.openHandles(), 2) << "TL and interface";
}

TEST_F(DeviceTest, AProbeFollowsAccessAndTransport)
{
    const struct
    {
        const char *keys; // of a locked camera
        std::int32_t access;
        const char *accessName;
        const char *state; // of one that isn't probed: nothing is known
    } rows[] = {{"", 1, "ReadWrite", "GEV locked"},
                {"access = \"readonly\"\n", 2, "ReadOnly", "GEV locked"},
                {"access = \"noaccess\"\n", 3, "NoAccess", "Unknown without a lock"},
                {"access = \"busy\"\n", 4, "Busy", "Unknown without a lock"},
                {"access = \"open_readwrite\"\n", 5, "OpenReadWrite", "Unknown without a lock"},
                {"access = \"open_readonly\"\n", 6, "OpenReadOnly", "Unknown without a lock"},
                {"access = \"unknown\"\n", 0, "Unknown", "Unknown without a lock"},
                {"type = \"U3V\"\ndescription = \"zipped\"\n", 1, "ReadWrite", "U3V locked"},
                {"type = \"gev\"\n", 1, "ReadWrite", "Other locked"},
                {"lock = \"none\"\n", 1, "ReadWrite", "GEV without a lock"}};
    for (const auto &row : rows) {
        EXPECT_EQ(startWith(camera(row.keys)), "") << row.keys;
        EXPECT_EQ(device()->accessStatus(), row.access) << row.keys;
        EXPECT_EQ(accessStatusName(row.access), row.accessName);
        EXPECT_EQ(stateOf(*device()), row.state) << row.keys;
        const std::string_view state = row.state;
        EXPECT_EQ(simulator.calls("IFOpenDevice").empty(), state.starts_with("Unknown")) << row.keys;
        EXPECT_EQ(device()->ipAddress() != 0, state.starts_with("GEV")) << row.keys;
    }
    EXPECT_EQ(accessStatusName(7), "Unimplemented item");
}

TEST_F(DeviceTest, OpenAndClose)
{
    select();
    EXPECT_EQ(stateOf(*device()), "GEV open locked");
    simulator.clearLog();
    device()->open();
    device()->probe(); // it is open
    device()->close(false);
    device()->close(false);
    EXPECT_THAT(functionsOf(simulator.calls()), ElementsAre("GCReadPort", "GCReadPort", "DevClose"));
    device()->open();
    EXPECT_THAT(simulator.calls(), testing::Contains(HasSubstr("IFOpenDevice(h2, \"sim-1\", 3)")));
    EXPECT_EQ(simulator.lockTraffic(), "locked user locked");
    simulator.clearLog();
    device()->close(true);
    EXPECT_THAT(functionsOf(simulator.calls()), ElementsAre("DevClose"));
}

// Only 1 is locked, and only 0 the factory password.
TEST_F(DeviceTest, OtherValuesInTheStateRegisters)
{
    simulator.configure(camera("lock_state_value = 2\npassword_state_value = 7\n"));
    select();
    EXPECT_EQ(stateOf(*device()), "GEV open");
    EXPECT_FALSE(device()->readPasswordSupport());
}

TEST_F(DeviceTest, ADeviceThatIsSwitchedOffDoesNothing)
{
    Device off(nullptr, "");
    EXPECT_EQ(printedBy([&] {
                  off.probe();
                  off.open();
                  off.close(false);
                  EXPECT_FALSE(off.readPasswordSupport());
                  off.lock();
                  off.unlock("hunter22");
                  off.setPassword("hunter22");
                  off.factoryReset();
              }),
              "");
    EXPECT_EQ(stateOf(off), "Unknown without a lock");
    EXPECT_EQ(off.accessStatus(), 0);
    EXPECT_EQ(off.model() + off.serialNumber() + off.userDefinedName() + off.displayName() + off.tlType(),
              "");
}

TEST_F(DeviceTest, AFailedOpenNamesControlAccessAlsoInAProbe)
{
    fail("IFOpenDevice", 1, 0);
    const std::string expected = failed("IFOpenDevice(DEVICE_ACCESS_CONTROL) for device with id 'sim-1'");
    EXPECT_EQ(start(), expected);
    EXPECT_EQ(printedBy([this] { backEnd->selectDevice(device()); }), expected);
    EXPECT_EQ(stateOf(*device()), "Unknown without a lock") << "it is in the list all the same";
    EXPECT_THAT(simulator.calls("DevGetInfo"), testing::IsEmpty()) << "the probe ends with the failed open";
    EXPECT_FALSE(backEnd->selectedIsLocked()) << "it stays selected: none selected would answer true";
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
    EXPECT_THAT(functionsOf(simulator.calls()), ElementsAre("IFOpenDevice", "DevGetPort", "GCGetLastError",
                                                            "DevClose", "GCGetPortInfo", "GCGetLastError"))
        << "the cache refresh of the close and the support read fail: the port of the probe is closed";
    EXPECT_FALSE(device()->isOpen());
    EXPECT_FALSE(device()->passwordSupported());
}

TEST_F(DeviceTest, AProbeKeepsWhatItHasLearnedBeforeAFailure)
{
    const struct
    {
        const char *function;
        std::uint64_t call;
        std::string printed; // from the start
        const char *state;
    } rows[] = {
        // A read without a port is a failed read, and the transport is asked for all the same.
        {"GCReadPort", 1,
         portFailed +
             "GCReadPort failed with code -1010! Message: no \n"
             "ERROR: IFGetDeviceInfo(DEVICE_INFO_TLTYPE,sim-1) failed with code -1006!\n         Msg: ",
         "Unknown without a lock"},
        // The first read of an address, whose exception leaves the probe.
        {"GCReadPort", 5, probeFailed + "GCReadPort failed with code -1010! Message: no \n", "GEV locked"},
        // Names the query of the interface.
        {"DevGetInfo", 1, failed("IFGetDeviceInfo(DEVICE_INFO_TLTYPE,sim-1)"), "Unknown locked"},
    };
    for (const auto &row : rows) {
        startWith("");
        simulator.configure(camera(""));
        fail(row.function, row.call);
        simulator.clearLog();
        EXPECT_THAT(pass(), StartsWith(row.printed));
        EXPECT_EQ(stateOf(*device()), row.state) << row.printed;
        EXPECT_EQ(simulator.calls("DevClose").size(), 1u) << row.printed;
    }
}

TEST_F(DeviceTest, DescriptionsThatAreOfLittleUse)
{
    describe("<IntReg Name=\"GevMACAddress\"><Address>0x50001000</Address><Length>4</Length>"
             "<pPort>Device</pPort></IntReg>");
    EXPECT_EQ(start(), "ERROR: Could not open the remote device node 'GevCurrentIPAddress'!\n");
    EXPECT_EQ(device()->ipAddress(), 0u);
    EXPECT_EQ(device()->macAddress(), 0x8000000000000000u) << "no plain integer";
    describe("<Port Name=\"Device\"/>");
    EXPECT_THAT(start(), StartsWith(portFailed + "Node 'Device'"));
    EXPECT_EQ(simulator.openHandles(), 2);
}

TEST_F(DeviceTest, APassGoesOnBehindAnExceptionOfGenApi)
{
    describe("<Integer Name=\"GevCurrentIPAddress\"><pValue>GevCurrentIPAddress</pValue></Integer>",
             "[[interface.camera]]\nid = \"sim-2\"\n");
    EXPECT_THAT(start(), testing::AllOf(StartsWith(probeFailed), HasSubstr("GevCurrentIPAddress")));
    ASSERT_THAT(ids(), ElementsAre("sim-1", "sim-2"));
    EXPECT_EQ(device(0)->transportType(), TransportType::GEV) << "as far as it is known";
    EXPECT_EQ(device(1)->transportType(), TransportType::GEV);
    EXPECT_EQ(simulator.openHandles(), 2);
}

TEST_F(DeviceTest, TextQueries)
{
    const struct
    {
        std::string (Device::*ask)() const;
        std::string query;
        const char *answer;
    } rows[] = {{&Device::model, "DEVICE_INFO_MODEL", "SimCam G5"},
                {&Device::tlType, "DEVICE_INFO_TLTYPE", "GEV"},
                {&Device::displayName, "DEVICE_INFO_DISPLAYNAME", "SimCam G5 (G5-0001)"},
                {&Device::serialNumber, "DEVICE_INFO_SERIAL_NUMBER", "G5-0001"}};
    start();
    for (const auto &row : rows)
        EXPECT_EQ((device()->*row.ask)(), row.answer) << row.query;

    fail("IFGetDeviceInfo", 1, 0);
    pass();
    for (const auto &row : rows)
        EXPECT_EQ(printedBy([&] { EXPECT_EQ((device()->*row.ask)(), ""); }),
                  failed("IFGetDeviceInfo(" + row.query + ",sim-1)"));
    EXPECT_EQ(printedBy([this] { EXPECT_EQ(device()->accessStatus(), 0); }),
              failed("IFGetDeviceInfo(DEVICE_INFO_ACCESS_STATUS,sim-1)"));
    EXPECT_THAT([this] { device()->userDefinedName(); },
                testing::ThrowsMessage<std::runtime_error>(
                    "ERROR: IFGetDeviceInfo(DEVICE_INFO_USER_DEFINED_NAME,sim-1) failed with code -1010!"))
        << "alone of its family";
}

} // namespace
