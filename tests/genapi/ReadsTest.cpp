// SPDX-License-Identifier: MIT
// How often a call from outside asks the device: on a camera each read is a round trip that a user waits for.
#include "Camera.h"
#include "ReadShapes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace GenApi_3_2_TVN;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

TEST(Reads, AskEachPlaceOnceWithinACall)
{
    Camera selector{Camera::whole, readshapes::selector()};
    selector.port.set(4, {1});
    EXPECT_EQ(selector.node("Selector")->GetAccessMode(), RW);
    EXPECT_THAT(selector.port.accesses, UnorderedElementsAre("R 0 4", "R 4 4", "R 8 4", "R 12 4", "R 16 4",
                                                             "R 20 4", "R 24 4", "R 28 4", "R 32 4"));
    selector.port.accesses.clear();
    EXPECT_EQ(selector.node("Selector")->GetAccessMode(), RW);
    EXPECT_THAT(selector.port.accesses, ElementsAre()) << "the next call knows it all";

    Camera format{Camera::whole, readshapes::format()};
    format.port.set(0, std::vector<std::uint8_t>(12, 0xff));
    StringList_t symbolics;
    format.enumeration("Format")->GetSymbolics(symbolics);
    EXPECT_EQ(symbolics.size(), 30U);
    EXPECT_THAT(format.port.accesses, UnorderedElementsAre("R 0 4", "R 4 4", "R 8 4", "R 12 4"));
    format.port.accesses.clear();
    format.nodeMap._EnableCaching(false);
    format.enumeration("Format")->SetIntValue(3);
    EXPECT_THAT(format.port.accesses, UnorderedElementsAre("R 0 4", "R 4 4", "R 8 4", "R 12 4", "W 16 4"));
}

/// A lock and two fields lie in one word; "Live" is not to be kept.
TEST(Reads, AskAgainBehindAWriteAndWhatIsNotToBeKept)
{
    Camera camera{element("MaskedIntReg", "Lock", at(0, 1, "<Bit>7</Bit>")) +
                  element("MaskedIntReg", "A", at(0, 1, readWrite + "<LSB>0</LSB><MSB>1</MSB>")) +
                  element("MaskedIntReg", "B", at(0, 1, readWrite + "<LSB>2</LSB><MSB>3</MSB>")) +
                  element("IntReg", "Live", at(1, 1, "<Cachable>NoCache</Cachable>")) +
                  element("Integer", "Both",
                          "<pIsLocked>Lock</pIsLocked><pValue>A</pValue><pValueCopy>B</pValueCopy>") +
                  element("IntSwissKnife", "Twice",
                          "<pVariable Name='X'>Live</pVariable><pVariable "
                          "Name='Y'>Live</pVariable><Formula>X+Y</Formula>")};
    camera.integer("Both")->SetValue(2);
    EXPECT_THAT(camera.port.accesses, ElementsAre("R 0 1", "W 0 1", "R 0 1", "W 0 1"));
    EXPECT_THAT(camera.port.get(0, 1), ElementsAre(0x0a));
    camera.port.accesses.clear();
    camera.value("Twice");
    EXPECT_THAT(camera.port.accesses, ElementsAre("R 1 1", "R 1 1"));
    camera.port.accesses.clear();
    camera.port.set(0, {0x0f});
    EXPECT_EQ(camera.integer("A")->GetValue(false, true) + camera.value("B"), 6)
        << "what one has read, both know";
    EXPECT_THAT(camera.port.accesses, ElementsAre("R 0 1"));
}

/// The device leaves "Once" by itself.
TEST(Reads, AskTheDeviceWhileAnEntryClearsItself)
{
    Camera camera{"<Enumeration Name='Auto'><EnumEntry Name='Off'><Value>0</Value></EnumEntry>"
                  "<EnumEntry Name='Once'><Value>1</Value><IsSelfClearing>Yes</IsSelfClearing></EnumEntry>"
                  "<pValue>Raw</pValue></Enumeration>" +
                  element("IntReg", "Raw", at(0, 1, readWrite)) +
                  element("IntSwissKnife", "IsDone",
                          "<pVariable Name='A'>Auto</pVariable><Formula>A = A.Entry.Off</Formula>")};
    const CEnumerationPtr autoMode = camera.enumeration("Auto");
    autoMode->SetIntValue(1);
    EXPECT_EQ(autoMode->GetIntValue(), 1);
    EXPECT_EQ(camera.value("IsDone"), 0);
    camera.port.set(0, {0});
    EXPECT_EQ(camera.value("IsDone"), 1);
    EXPECT_EQ(autoMode->GetCurrentEntry()->GetSymbolic(), "Off");
    camera.port.accesses.clear();
    autoMode->GetIntValue();
    EXPECT_THAT(camera.port.accesses, ElementsAre()) << "and no longer";
}

} // namespace
