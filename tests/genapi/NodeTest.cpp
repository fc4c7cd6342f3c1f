// SPDX-License-Identifier: MIT
// What the interfaces give beyond a value: ports, lists of nodes, the entries of an enumeration; and how often a call
// asks the device.
#include "Conversation.h"
#include "ReadShapes.h"

#include <gmock/gmock.h>

using namespace GenApi_3_2_TVN;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

const std::string reg = element("IntReg", "X", at(0, 1));

TEST(Port, IsConnectedByNameAndEndsWhatTheOldOneAnswered)
{
    Camera camera{constant("NoPort", "1") + reg};
    EXPECT_TRUE(camera.isConnected);
    EXPECT_FALSE(camera.nodeMap._Connect(&camera.port, "Nobody"));
    EXPECT_FALSE(camera.nodeMap._Connect(&camera.port, "NoPort"));
    EXPECT_EQ(camera.value("X"), 0);
    FakeStackedPort stacked;
    stacked.set(0, {4});
    EXPECT_FALSE(camera.nodeMap._Connect(&stacked, "Nobody"));
    EXPECT_TRUE(camera.nodeMap._Connect(&stacked, "Device"));
    EXPECT_EQ(camera.value("X"), 4);
    EXPECT_TRUE(camera.nodeMap._Connect(static_cast<IPort *>(&camera.port)));
    EXPECT_EQ(camera.value("X"), 0);
    EXPECT_TRUE(camera.nodeMap._Connect(&stacked));
    EXPECT_EQ(camera.value("X"), 4) << "by the device's name";
    dynamic_cast<IPort *>(camera.node("Device"))->Write("\x05", 0, 1);
    EXPECT_EQ(camera.value("X"), 5) << "written through the port node";
}

TEST(Port, ReplaysRecordedWritesAndInvalidatesItsNode)
{
    struct Writes : IPortWriteList
    {
        void Replay(IPort *port) override { port->Write("\x05", 0, 1); }
    } writes;
    Camera camera{reg};
    EXPECT_EQ(camera.value("X"), 0);
    camera.port.Replay(&writes, true);
    EXPECT_EQ(camera.value("X"), 0) << "the port does not know its node yet";
    camera.port.SetPortImpl(dynamic_cast<IPort *>(camera.node("Device")));
    camera.port.Replay(&writes, false);
    EXPECT_EQ(camera.value("X"), 0) << "not asked to invalidate";
    camera.port.Replay(nullptr, true);
    EXPECT_EQ(camera.value("X"), 5);
    camera.port.SetPortImpl(nullptr);
    camera.port.set(0, {6});
    camera.port.Replay(nullptr, true);
    EXPECT_EQ(camera.value("X"), 5) << "the port has forgotten its node";
    EXPECT_EQ(camera.port.GetSwapEndianess(), No);
}

TEST(NodeMap, ListsItsNodesInOrderAndLeavesOutWhatIsNone)
{
    Camera camera{
        "<Group Comment='outer'><Group><Group/>" + constant("Deep", "3") + "</Group>" +
        constant("After", "4") + "</Group>" + constant("Two", "1") + constant("Two", "2") +
        element("Integer", "Empty", "") +
        element("Enumeration", "Mode", "<Value>1</Value>" + element("EnumEntry", "On", "<Value>1</Value>"))};
    NodeList_t all;
    camera.nodeMap._GetNodes(all);
    EXPECT_THAT(all, ElementsAre(camera.node("Device"), camera.node("Deep"), camera.node("After"),
                                 camera.node("Mode")));
    EXPECT_EQ(camera.nodeMap._GetNumNodes(), 7U);
    EXPECT_EQ(camera.node("EnumEntry_Mode_Off"), nullptr);
}

TEST(Enumeration, FindsItsEntries)
{
    Camera camera{"<Enumeration Name='Mode'><Value>1</Value>"
                  "<EnumEntry Name='Off'><Value>-1</Value><NumericValue>0.25</NumericValue></EnumEntry>"
                  "<EnumEntry Name='Fast'><Value>3</Value><Symbolic>Very Fast</Symbolic></EnumEntry>"
                  "<EnumEntry Name='Once'><Value>6</Value><IsSelfClearing>Yes</IsSelfClearing></EnumEntry>"
                  "<EnumEntry Name='Twice'><Value>4</Value></EnumEntry><EnumEntry "
                  "Name='Twice'><Value>5</Value></EnumEntry>"
                  "<EnumEntry Name='Broken'><Value>x</Value></EnumEntry></Enumeration>"};
    const CEnumerationPtr mode = camera.enumeration("Mode");
    NodeList_t entries;
    mode->GetEntries(entries);
    EXPECT_EQ(entries.size(), 5U) << "without the broken one";
    EXPECT_EQ(mode->GetEntryByName("Off")->GetNumericValue(), 0.25);
    EXPECT_EQ(mode->GetEntryByName("Very Fast")->GetNumericValue(), 3);
    EXPECT_EQ(mode->GetEntryByName("Fast"), nullptr) << "its symbolic is another";
    EXPECT_TRUE(mode->GetEntryByName("Once")->IsSelfClearing());
    EXPECT_FALSE(mode->GetEntryByName("Off")->IsSelfClearing());
    EXPECT_EQ(mode->GetEntry(7), nullptr);
    EXPECT_EQ(dynamic_cast<IBase *>(mode->GetEntry(3)),
              static_cast<IBase *>(camera.node("EnumEntry_Mode_Fast")));
    EXPECT_EQ(refusal([&] { mode->GetEntryByName("Twice"); }),
              "Node 'Mode': its entry 'Twice' is defined more than once");
}

/// On a camera each read is a round trip that a user waits for.
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

/// A device that does not answer: each read takes as long as a user waits for a dead cable.
class SilentPort : public FakePort
{
public:
    void Read(void *buffer, std::int64_t address, std::int64_t length) override
    {
        FakePort::Read(buffer, address, length);
        throw GenICam_3_2_TVN::RuntimeException{"no answer", "Port", 1, "RuntimeException"};
    }
};

TEST(Reads, ThatFailAreNotRepeatedWithinACall)
{
    SilentPort port;
    Camera format{Camera::whole, readshapes::format()};
    format.nodeMap._Connect(static_cast<IPort *>(&port), "Device");
    StringList_t symbolics;
    format.enumeration("Format")->GetSymbolics(symbolics);
    EXPECT_THAT(symbolics, ElementsAre()) << "whose conditions can't be read";
    EXPECT_THAT(port.accesses, ElementsAre("R 0 4"));
    EXPECT_EQ(refusal([&] { format.value("In1"); }), "no answer");
    EXPECT_THAT(port.accesses, ElementsAre("R 0 4", "R 0 4")) << "the next call asks again";
}

} // namespace
