// SPDX-License-Identifier: MIT
// What whole runs of the dialogue do not reach: reads that fail behind the table and the summary, equal serial
// numbers, and questions without a choice.
#include "BackEndFixture.h"

#include <gmock/gmock.h>

using testing::EndsWith;
using testing::HasSubstr;

namespace {

class DialogueTest : public BackEndTest
{
protected:
    std::string run(std::string_view input = "")
    {
        return printedBy([this] { EXPECT_EQ(backEnd->runConsole(), 0); }, input);
    }

    const std::string second = "[[interface.camera]]\nid = \"sim-2\"\n";
};

TEST_F(DialogueTest, AFirmwareVersionThatCannotBeReadIsUnknown)
{
    const std::string summary = "Firmware version:     (unknown)\nPassword protection:  yes\n";
    const auto runWithFirmware = [&](const std::string &node) {
        describe(node);
        backEnd = std::make_unique<BackEnd>();
        return run("q\n");
    };
    EXPECT_THAT(runWithFirmware("<StringReg Name=\"DeviceFirmwareVersion\"><Address>0x7fff0000</Address>"
                                "<Length>16</Length><pPort>Device</pPort></StringReg>"),
                HasSubstr(summary))
        << "the port's failure";
    EXPECT_THAT(runWithFirmware(
                    "<String Name=\"DeviceFirmwareVersion\"><pValue>DeviceFirmwareVersion</pValue></String>"),
                testing::AllOf(HasSubstr(summary), EndsWith("q: quit program... ")))
        << "GenApi's failure, and the run goes on";
}

TEST_F(DialogueTest, WarningsOfTheTableComeBehindIt)
{
    simulator.configure(camera("") + second + "lock = \"none\"\n");
    fail("IFGetDeviceInfo", 1, 0, "command = 6\n");
    start();
    EXPECT_THAT(
        printedBy([this] { backEnd->printDevices(true); }),
        EndsWith("2   | SimCam           | sim-2            | (unknown)        | (unknown)        | sim-2\n"
                 "\nWARNING: Could not read device information of device 1. Check network configuration."
                 "\nWARNING: Could not read device information of device 2. Check network configuration."
                 "\n\n"));
}

TEST_F(DialogueTest, TheFirstAccessibleDeviceOfASerialNumberIsTaken)
{
    simulator.configure(camera("serial = \"S\"\nmodel = \"Held\"\naccess = \"busy\"\n") + second +
                        "serial = \"S\"\nmodel = \"Free\"\n");
    backEnd->setPresetSerial("S");
    backEnd->setPresetLock(true);
    EXPECT_THAT(run(), HasSubstr("Will use selected device Free (S).\n"));
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
                  backEnd->selectOption({"a", "b"});
              }),
              "\nSelect an option: ")
        << "the end of the input, where no key is \"q\"";
}

// Their error lines come in this order.
TEST_F(DialogueTest, TheModelIsAskedForBeforeTheSerialNumber)
{
    backEnd->setPresetSerial("G5-0001");
    backEnd->setPresetLock(true);
    run();
    const std::vector<std::string> queries = simulator.calls("IFGetDeviceInfo");
    ASSERT_GE(queries.size(), 2u);
    EXPECT_THAT(queries.rbegin()[1], HasSubstr(", 2) = "));
    EXPECT_THAT(queries.back(), HasSubstr(", 7) = "));
}

} // namespace
