// SPDX-License-Identifier: MIT
// What whole runs of the dialogue do not reach: reads that fail behind the table and the summary, equal serial
// numbers, and questions without a choice.
#include "BackEndFixture.h"

#include <gmock/gmock.h>

#include <fstream>

using testing::EndsWith;
using testing::HasSubstr;

namespace {

constexpr const char *oneInterface = "[[interface]]\nid = \"eth0\"\ntype = \"U3V\"\n";

class DialogueTest : public BackEndTest
{
protected:
    static std::string camera(const std::string &id, const std::string &keys)
    {
        return "[[interface.camera]]\nid = \"" + id + "\"\n" + keys;
    }

    std::string run(std::string_view input)
    {
        backEnd = std::make_unique<BackEnd>();
        return printedBy([this] { EXPECT_EQ(backEnd->runConsole(), 0); }, input);
    }
};

TEST_F(DialogueTest, AFirmwareVersionThatCannotBeReadIsUnknown)
{
    const std::string summary = "Firmware version:     (unknown)\nPassword protection:  yes\n";
    const auto withFirmware = [&](const std::string &nodes) {
        std::ofstream("own.xml")
            << "<RegisterDescription ModelName=\"m\" VendorName=\"v\"><Port Name=\"Device\"/>" << nodes
            << "</RegisterDescription>";
        simulator.configure(oneInterface + camera("A", "xml = \"own.xml\"\n"));
    };
    withFirmware("<StringReg Name=\"DeviceFirmwareVersion\"><Address>0x7fff0000</Address><Length>16</Length>"
                 "<pPort>Device</pPort></StringReg>");
    EXPECT_THAT(run("q\n"), HasSubstr(summary)) << "the port's failure";
    withFirmware("<String Name=\"DeviceFirmwareVersion\"><pValue>DeviceFirmwareVersion</pValue></String>");
    const std::string printed = run("q\n");
    EXPECT_THAT(printed, HasSubstr(summary)) << "GenApi's failure";
    EXPECT_THAT(printed, EndsWith("q: quit program... ")) << "the run goes on";
}

TEST_F(DialogueTest, WarningsOfTheTableComeBehindIt)
{
    simulator.configure(oneInterface + camera("A", "lock = \"locked\"\n") + camera("B", "lock = \"none\"\n"));
    simulator.failNth("IFGetDeviceInfo", -1010, 1, 0, "command = 6\n");
    start();
    EXPECT_THAT(
        printedBy([this] { backEnd->printDevices(true); }),
        EndsWith("2   | SimCam           | B                | (unknown)        | (unknown)        | B\n"
                 "\nWARNING: Could not read device information of device 1. Check network configuration."
                 "\nWARNING: Could not read device information of device 2. Check network configuration."
                 "\n\n"));
}

TEST_F(DialogueTest, TheFirstAccessibleDeviceOfASerialNumberIsTaken)
{
    simulator.configure(oneInterface + camera("A", "serial = \"S\"\nmodel = \"Held\"\naccess = \"busy\"\n") +
                        camera("B", "serial = \"S\"\nmodel = \"Free\"\n"));
    backEnd->setPresetSerial("S");
    backEnd->setPresetLock(true);
    EXPECT_THAT(printedBy([this] { EXPECT_EQ(backEnd->runConsole(), 0); }),
                HasSubstr("Will use selected device Free (S).\n"));
}

TEST_F(DialogueTest, QuestionsWithoutAChoiceAreNotAsked)
{
    EXPECT_EQ(printedBy([this] {
                  EXPECT_EQ(backEnd->selectOption({}), 0u);
                  EXPECT_EQ(backEnd->selectOption({"x"}), 0u);
                  EXPECT_EQ(backEnd->selectIndex(1, 1), 1u);
                  EXPECT_EQ(backEnd->selectIndex(0, 7), 7u);
              }),
              "");
    EXPECT_EQ(printedBy([this] {
                  EXPECT_EQ(backEnd->selectOption({"a", "b"}), 0u);
              }),
              "\nSelect an option: ")
        << "the end of the input, where no key is \"q\"";
}

} // namespace
