// SPDX-License-Identifier: MIT
// What nodes have in common: where a register lies, access, caching, properties, and kinds without an
// integer.
#include "Camera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace GenApi_3_2_TVN;
using testing::ElementsAre;

namespace {

const std::string oneByte = "<Address>0</Address><Length>1</Length>";

std::string reg(const std::string &name, const std::string &place, const std::string &more = "")
{
    return element("IntReg", name, place + more + "<pPort>Device</pPort>");
}

TEST(Node, AddressesAreTheSumOfTheirParts)
{
    const std::pair<std::string, const char *> rows[] = {
        {"<Address>0x100</Address><Address>8</Address><Length>4</Length>", "R 264 4"},
        {"<pAddress>Base</pAddress><pAddress>Two</pAddress><Length>2</Length>", "R 4098 2"},
        {"<pAddress>Minus</pAddress><Address>32</Address><Length>1</Length>", "R 16 1"},
        {"<Address>-4</Address><pAddress>Base</pAddress><Length>1</Length>", "R 4092 1"},
        {"<IntSwissKnife><pVariable Name='B'>Base</pVariable><Formula>B * 2</Formula></IntSwissKnife>"
         "<Address>1</Address><Length>4</Length>",
         "R 8193 4"},
        {"<Address>16</Address><pIndex Offset='0x10'>Two</pIndex><Length>4</Length>", "R 48 4"},
        {"<Address>16</Address><pIndex pOffset='Size'>Two</pIndex><Length>4</Length>", "R 22 4"},
        {"<Address>16</Address><pIndex>Two</pIndex><Length>4</Length>", "R 24 4"},
        {"<Address>16</Address><pLength>Size</pLength>", "R 16 3"},
        {"<Address>0xFFFFFFFFFFFFFFFF</Address><Length>1</Length>", "R 18446744073709551615 1"}};
    for (const auto &[place, access] : rows) {
        Camera camera{constant("Base", "0x1000") + constant("Two", "2") + constant("Minus", "-16") +
                      constant("Size", "3") + reg("X", place)};
        camera.value("X");
        EXPECT_THAT(camera.port.accesses, ElementsAre(access));
    }
}

TEST(Node, NamedFormulasInsideARegisterAreFoundByName)
{
    Camera camera{
        constant("Base", "64") +
        reg("X", "<IntSwissKnife Name='Where'><pVariable Name='B'>Base</pVariable><Formula>B + 4</Formula>"
                 "</IntSwissKnife><Length>1</Length>")};
    camera.value("X");
    EXPECT_THAT(camera.port.accesses, ElementsAre("R 68 1"));
    EXPECT_EQ(camera.value("Where"), 68);
}

TEST(Node, GroupsAreTransparentAndEntriesAreFoundByTheirEnumeration)
{
    Camera camera{"<Group Comment='outer'><Group><Group/>" + constant("Deep", "3") + "</Group>" +
                  constant("After", "4") + "</Group>" +
                  element("Enumeration", "Pixel_Format",
                          element("EnumEntry", "Mono_8", "<Value>1</Value>") + "<Value>1</Value>") +
                  element("Category", "Root",
                          "<pFeature>After</pFeature><pFeature>Gone</pFeature><pFeature>Deep</pFeature>")};
    ASSERT_NE(camera.node("EnumEntry_Pixel_Format_Mono_8"), nullptr);
    EXPECT_EQ(camera.node("EnumEntry_Pixel_Format_Mono_8")->GetName(), "EnumEntry_Pixel_Format_Mono_8");
    EXPECT_EQ(camera.node("EnumEntry_Pixel_Format_Mono_9"), nullptr);

    NodeList_t features;
    CCategoryPtr(camera.node("Root"))->GetFeatures(features);
    EXPECT_THAT(features, ElementsAre(camera.node("After"), camera.node("Deep")));
    NodeList_t all;
    camera.nodeMap._GetNodes(all);
    EXPECT_THAT(all, ElementsAre(camera.node("Device"), camera.node("Deep"), camera.node("After"),
                                 camera.node("Pixel_Format"), camera.node("Root")));
    EXPECT_EQ(camera.nodeMap._GetNumNodes(), 5U);
}

TEST(Node, PropertiesAreWhatTheDescriptionSays)
{
    Camera camera{
        element("Integer", "Gain",
                "<ToolTip> How <!-- much --> bright </ToolTip><Value>1</Value>"
                "<pSelected>A</pSelected><pSelected>B</pSelected>") +
        element("IntSwissKnife", "K", "<pVariable Name='V'>Gain</pVariable><Formula>V</Formula>") +
        element("Enumeration", "Mode", element("EnumEntry", "On", "<Value>1</Value>") + "<Value>1</Value>")};
    GenICam_3_2_TVN::gcstring value;
    GenICam_3_2_TVN::gcstring attribute{"as before"};
    const auto property = [&](const char *node, const char *name) {
        EXPECT_TRUE(camera.node(node)->GetProperty(name, value, attribute)) << name;
        return std::string{value.c_str()} + "|" + attribute.c_str();
    };
    EXPECT_FALSE(camera.node("Gain")->GetProperty("Unit", value, attribute));
    EXPECT_EQ(attribute, "as before");
    EXPECT_EQ(property("EnumEntry_Mode_On", "NodeType"), "EnumEntry|");
    EXPECT_EQ(property("Gain", "ToolTip"), "How  bright|");
    EXPECT_EQ(property("Gain", "pSelected"), "A\tB|\t");
    EXPECT_EQ(property("K", "pVariable"), "Gain|V");
}

TEST(Node, AccessModeIsTheNarrowestOfAllThatIsReferredTo)
{
    Camera camera{
        reg("Default", oneByte) + reg("Both", oneByte, readWrite) +
        reg("In", oneByte, "<AccessMode>WO</AccessMode>") +
        reg("Imposed", oneByte, "<AccessMode>RW</AccessMode><ImposedAccessMode>RO</ImposedAccessMode>") +
        reg("Torn", oneByte, "<AccessMode>WO</AccessMode><ImposedAccessMode>RO</ImposedAccessMode>") +
        reg("Shut", oneByte, "<AccessMode>WO</AccessMode><pIsLocked>Own</pIsLocked>") +
        element("Integer", "Outer", "<pValue>Imposed</pValue>") +
        element("IntSwissKnife", "Knife", "<pVariable Name='B'>Both</pVariable><Formula>B</Formula>") +
        element("IntSwissKnife", "Blind", "<pVariable Name='I'>In</pVariable><Formula>I</Formula>") +
        constant("Own", "1")};
    const auto mode = [&](const char *name) { return camera.node(name)->GetAccessMode(); };
    EXPECT_THAT((std::vector{mode("Default"), mode("Both"), mode("In"), mode("Imposed"), mode("Torn"),
                             mode("Shut"), mode("Outer"), mode("Knife"), mode("Blind"), mode("Own")}),
                ElementsAre(RO, RW, WO, RO, NA, NA, RO, RO, NA, RW));
    camera.port.accessMode = RO;
    EXPECT_EQ(mode("Both"), RO);
    EXPECT_EQ(mode("In"), NA);
    camera.port.accesses.clear();
    camera.integer("Both")->SetValue(1);
    EXPECT_THAT(camera.port.accesses, ElementsAre("W 0 1"))
        << "the port itself refuses what it does not allow";

    EXPECT_EQ(refusal([&] { camera.integer("Default")->SetValue(1, false); }),
              "Node 'Default': can only be read");
    EXPECT_EQ(refusal([&] { camera.value("In"); }), "Node 'In': can only be written");
    EXPECT_EQ(refusal([&] { camera.value("Torn"); }), "Node 'Torn': not available at present");
}

TEST(Node, ConditionsNarrowTheAccessInTheirOrder)
{
    Camera camera{
        element("Boolean", "Flag", "<pValue>Raw</pValue><OnValue>5</OnValue>") + constant("Raw", "5") +
        element("Integer", "Gain",
                "<pIsImplemented>Flag</pIsImplemented><pIsAvailable>Switch</pIsAvailable><Value>1</Value>") +
        constant("Switch", "-1") + element("Integer", "Outer", "<pValue>Gain</pValue>") +
        element("Command", "Go",
                "<pIsLocked>Switch</pIsLocked><pValue>Raw</pValue><CommandValue>9</CommandValue>")};
    EXPECT_EQ(camera.node("Gain")->GetAccessMode(), RW);
    camera.integer("Switch")->SetValue(0);
    EXPECT_EQ(camera.node("Gain")->GetAccessMode(), NA);
    EXPECT_EQ(camera.node("Outer")->GetAccessMode(), NA);
    EXPECT_EQ(refusal([&] { camera.value("Gain"); }),
              "Node 'Gain': not available at present, since 'Switch' is 0");
    camera.integer("Switch")->SetValue(1);
    camera.integer("Raw")->SetValue(6);
    EXPECT_EQ(camera.node("Gain")->GetAccessMode(), NI) << "the flag compares with its OnValue";
    EXPECT_EQ(camera.node("Outer")->GetAccessMode(), NI);
    EXPECT_EQ(refusal([&] { camera.value("Gain"); }), "Node 'Gain': not implemented, since 'Flag' is 0");
    EXPECT_EQ(refusal([&] { camera.command("Go")->Execute(); }), "Node 'Go': locked by 'Switch', which is 1");
    camera.boolean("Flag")->SetValue(true);
    EXPECT_EQ(camera.value("Raw"), 5);
}

TEST(Node, LocksAreNodesOfEveryKind)
{
    const std::string variable = "<pVariable Name='V'>One</pVariable>";
    const std::string quarter =
        "<FormulaTo>FROM</FormulaTo><FormulaFrom>TO / 4</FormulaFrom><pValue>One</pValue>";
    const std::pair<const char *, std::string> locks[] = {
        {"Integer", "<pValue>One</pValue>"},
        {"Float", "<pValue>Quarter</pValue>"},
        {"FloatReg", at(0, 4)},
        {"IntReg", at(0, 4)},
        {"MaskedIntReg", at(0, 4, "<LSB>8</LSB><MSB>31</MSB>")},
        {"SwissKnife", variable + "<Formula>V / 4</Formula>"},
        {"IntSwissKnife", variable + "<Formula>-V</Formula>"},
        {"Converter", quarter},
        {"IntConverter", "<FormulaTo>FROM</FormulaTo><FormulaFrom>TO * 2</FormulaFrom><pValue>One</pValue>"},
        {"Boolean", "<pValue>One</pValue>"},
        {"Enumeration", "<EnumEntry Name='A'><Value>1</Value></EnumEntry><pValue>One</pValue>"}};
    for (const auto &[kind, children] : locks) {
        Camera camera{constant("One", "1") + element("Converter", "Quarter", quarter) +
                      element(kind, "Lock", children) +
                      element("Float", "Gain", "<pIsLocked>Lock</pIsLocked><Value>1</Value>")};
        camera.port.set(0, {0, 0, 0, 0x3f});
        EXPECT_EQ(camera.node("Gain")->GetAccessMode(), RO) << kind;
        camera.port.set(3, {0});
        camera.integer("One")->SetValue(0);
        EXPECT_EQ(camera.node("Gain")->GetAccessMode(), RW) << kind;
    }
}

TEST(Node, BooleansCommandsAndStringsReachTheirInnerNodes)
{
    Camera camera{
        reg("Raw", oneByte, readWrite) +
        element("Boolean", "Flag", "<pValue>Raw</pValue><OnValue>9</OnValue><OffValue>4</OffValue>") +
        element("Boolean", "Own", "<Value>true</Value>") +
        reg("Door", "<Address>8</Address><Length>1</Length>", "<AccessMode>WO</AccessMode>") +
        element("Command", "Go", "<pValue>Raw</pValue><CommandValue>3</CommandValue>") +
        element("Command", "Knock", "<pValue>Door</pValue><pCommandValue>Code</pCommandValue>") +
        element("Command", "Idle", "<Value>0</Value><CommandValue>7</CommandValue>") +
        constant("Code", "0x2a") + element("String", "Name", "<pValue>NameReg</pValue>") +
        element("String", "Fixed", "<Value>  steady </Value>") +
        element("StringReg", "NameReg", at(16, 6, readWrite))};
    camera.port.set(0, {9});
    EXPECT_TRUE(camera.boolean("Flag")->GetValue());
    camera.boolean("Flag")->SetValue(false);
    EXPECT_THAT(camera.port.get(0, 1), ElementsAre(4));
    EXPECT_TRUE(camera.boolean("Own")->GetValue());

    camera.command("Go")->Execute();
    EXPECT_FALSE(camera.command("Go")->IsDone());
    camera.port.set(0, {0});
    EXPECT_TRUE(camera.command("Go")->IsDone()) << "asked of the device, not of the cache";
    camera.command("Knock")->Execute();
    EXPECT_THAT(camera.port.get(8, 1), ElementsAre(0x2a));
    EXPECT_TRUE(camera.command("Knock")->IsDone());
    EXPECT_EQ(camera.node("Idle")->GetAccessMode(), WO);

    camera.port.set(16, {'a', 'b', 0, 'x', 'y', 'z'});
    EXPECT_EQ(camera.text("Name"), "ab");
    camera.string("Name")->SetValue("camera");
    EXPECT_EQ(camera.text("NameReg"), "camera") << "a full register needs no zero at its end";
    camera.string("NameReg")->SetValue("cam");
    EXPECT_THAT(camera.port.get(16, 6), ElementsAre('c', 'a', 'm', 0, 0, 0));
    EXPECT_EQ(camera.text("Fixed"), "steady");
    EXPECT_EQ(refusal([&] { camera.string("Name")->SetValue("cameras"); }),
              "Node 'Name': a text of 7 bytes; possible are 6");
}

TEST(Cache, AnswersUntilAnythingIsWrittenOrTimeIsUp)
{
    Camera camera{reg("Plain", oneByte, readWrite) +
                  element("IntReg", "Live", at(1, 1, "<Cachable>NoCache</Cachable>")) +
                  element("IntReg", "Slow", at(2, 1, "<PollingTime>1000</PollingTime>")) +
                  constant("Other", "1")};
    const auto reads = [&](const char *name) {
        camera.port.accesses.clear();
        camera.value(name);
        return camera.port.accesses.size();
    };
    EXPECT_EQ(reads("Plain") * 10 + reads("Plain"), 10U);
    EXPECT_EQ(reads("Live") * 10 + reads("Live"), 11U);
    camera.integer("Other")->SetValue(2);
    EXPECT_EQ(reads("Plain"), 1U);
    camera.node("Other")->InvalidateNode();
    EXPECT_EQ(reads("Plain"), 1U);
    camera.nodeMap._InvalidateNodes();
    EXPECT_EQ(reads("Plain"), 1U);
    EXPECT_EQ(reads("Slow"), 1U);
    camera.nodeMap._Poll(999);
    EXPECT_EQ(reads("Slow"), 0U);
    camera.nodeMap._Poll(1);
    EXPECT_EQ(reads("Slow") * 10 + reads("Plain"), 10U);

    camera.port.accesses.clear();
    camera.integer("Plain")->GetValue(false, true);
    EXPECT_EQ(camera.port.accesses.size(), 1U);
    camera.nodeMap._EnableCaching(false);
    EXPECT_EQ(reads("Plain") * 10 + reads("Plain"), 11U);
}

TEST(Cache, IsNeverStaleAfterAWriteThroughTheNodeMap)
{
    Camera camera{reg("Whole", "<Address>0</Address><Length>2</Length>", readWrite) +
                  element("MaskedIntReg", "Part", at(0, 2, readWrite + "<LSB>8</LSB><MSB>15</MSB>")) +
                  constant("Selector", "0") +
                  reg("Selected", "<Address>16</Address><pIndex>Selector</pIndex><Length>1</Length>")};
    camera.port.set(16, {10, 20});
    EXPECT_EQ(camera.value("Whole"), 0);
    camera.integer("Part")->SetValue(1);
    EXPECT_EQ(camera.value("Whole"), 256) << "another node on the same bytes";
    EXPECT_EQ(camera.value("Selected"), 10);
    camera.integer("Selector")->SetValue(1);
    EXPECT_EQ(camera.value("Selected"), 20) << "another place";
    dynamic_cast<IPort *>(camera.node("Device"))->Write("\x05", 17, 1);
    EXPECT_EQ(camera.value("Selected"), 5) << "through the port node";

    camera.port.failure = "cut off";
    EXPECT_THROW(camera.integer("Whole")->SetValue(7), std::runtime_error);
    camera.port.failure.clear();
    camera.port.set(0, {9, 0});
    EXPECT_EQ(camera.value("Whole"), 9) << "a write that failed may have done something";
}

TEST(Cache, IsOfOnePlaceAndOfReadsThatSucceeded)
{
    Camera camera{reg("Where", "<Address>64</Address><Length>1</Length>", "<Cachable>NoCache</Cachable>") +
                  reg("X", "<pAddress>Where</pAddress><Length>1</Length>")};
    camera.port.set(0, {10, 20});
    EXPECT_EQ(camera.value("X"), 10);
    camera.port.set(64, {1});
    EXPECT_EQ(camera.value("X"), 20) << "the device moved it";

    Camera cut{reg("X", oneByte)};
    cut.port.set(0, {10});
    EXPECT_EQ(cut.value("X"), 10);
    cut.port.failure = "cut off";
    EXPECT_THROW(cut.integer("X")->GetValue(false, true), std::runtime_error);
    cut.port.failure.clear();
    EXPECT_EQ(cut.value("X"), 10);
}

TEST(Port, FailuresPassThroughUnchangedAndLeaveTheNodeUsable)
{
    Camera camera{reg("Inner", oneByte) + "<Integer Name='Outer'><pValue>Inner</pValue></Integer>"};
    camera.port.failure = "GCReadPort failed";
    for (int time = 0; time < 2; ++time) {
        try {
            camera.value("Outer");
            ADD_FAILURE() << "no exception";
        } catch (const std::runtime_error &error) {
            EXPECT_STREQ(error.what(), "GCReadPort failed");
        }
    }
    camera.port.failure.clear();
    camera.port.set(0, {8});
    EXPECT_EQ(camera.value("Outer"), 8);
}

TEST(Port, IsConnectedByNameAndReplaysRecordedWrites)
{
    Camera camera{constant("NoPort", "1") + reg("X", oneByte)};
    EXPECT_TRUE(camera.isConnected);
    EXPECT_FALSE(camera.nodeMap._Connect(&camera.port, "Nobody"));
    EXPECT_FALSE(camera.nodeMap._Connect(&camera.port, "NoPort"));
    EXPECT_TRUE(camera.nodeMap._Connect(static_cast<IPort *>(nullptr)));
    EXPECT_EQ(camera.node("X")->GetAccessMode(), NA);
    EXPECT_EQ(refusal([&] { camera.value("X"); }), "Node 'X': port 'Device' is not connected");
    EXPECT_TRUE(camera.nodeMap._Connect(static_cast<IPort *>(&camera.port)));
    EXPECT_EQ(camera.value("X"), 0);
    FakePort other;
    other.set(0, {4});
    camera.nodeMap._Connect(&other, "Device");
    EXPECT_EQ(camera.value("X"), 4) << "what the old port answered is forgotten";
    camera.nodeMap._Connect(&camera.port, "Device");

    struct Writes : IPortWriteList
    {
        void Replay(IPort *port) override { port->Write("\x05", 0, 1); }
    } writes;
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

TEST(Port, AStackedOneIsConnectedAsAnyOther)
{
    FakeStackedPort stacked;
    stacked.set(0, {4});
    Camera camera{reg("X", oneByte)};
    EXPECT_FALSE(camera.nodeMap._Connect(&stacked, "Nobody"));
    EXPECT_EQ(camera.value("X"), 0);
    EXPECT_TRUE(camera.nodeMap._Connect(&stacked, "Device"));
    EXPECT_EQ(camera.value("X"), 4);
    camera.nodeMap._Connect(&camera.port, "Device");
    EXPECT_TRUE(camera.nodeMap._Connect(&stacked));
    EXPECT_EQ(camera.value("X"), 4) << "by the device's name";
}

TEST(Node, KindsOfOlderTransportsHaveTheirTypeAndWords)
{
    Camera camera{element("IntKey", "Key", "") + element("Integer", "Outer", "<pValue>Key</pValue>") +
                  element("Integer", "Whole", "<pValue>S</pValue>") + element("StructReg", "S", at(0, 4))};
    GenICam_3_2_TVN::gcstring type;
    GenICam_3_2_TVN::gcstring attribute;
    EXPECT_TRUE(camera.node("Key")->GetProperty("NodeType", type, attribute));
    EXPECT_EQ(type, "IntKey");
    EXPECT_FALSE(camera.integer("Key").IsValid());
    EXPECT_EQ(refusal([&] { camera.value("Outer"); }),
              "Node 'Outer': pValue names 'Key', a IntKey, a kind that this version does not evaluate");
    EXPECT_EQ(refusal([&] { camera.value("Whole"); }),
              "Node 'Whole': pValue names 'S', a StructReg, which has no number");
}

} // namespace
