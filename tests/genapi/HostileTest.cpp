// SPDX-License-Identifier: MIT
// Descriptions that are wrong, or written to break their reader: each ends in words that name the node, the
// way or the place, and leaves the node map usable.
#include "Camera.h"

#include <gtest/gtest.h>

namespace {

/// The node that a test uses.
std::string gain(const std::string &kind, const std::string &children)
{
    return element(kind, "Gain", children);
}

/// It as a register.
std::string reg(const std::string &children, const std::string &kind = "IntReg")
{
    return gain(kind, children + "<pPort>Device</pPort>");
}

std::string formula(const std::string &name, const std::string &target, const std::string &text = "V")
{
    return element("IntSwissKnife", name,
                   "<pVariable Name='V'>" + target + "</pVariable><Formula>" + text + "</Formula>");
}

/// What rows refer to.
const std::string others = constant("One", "1") + constant("Zero", "0") + constant("Low", "-1") +
                           constant("Eight", "8") + "<String Name='Text'><Value>1</Value></String>";

const std::string oneByte = "<Address>0</Address><Length>1</Length>";

/// Reads "Gain", or executes it, by the interface of its kind.
void use(GenApi_3_2_TVN::INode *node)
{
    using namespace GenApi_3_2_TVN;
    if (const CIntegerPtr integer{node})
        integer->GetValue();
    else if (const CFloatPtr real{node})
        real->GetValue();
    else if (const CBooleanPtr boolean{node})
        boolean->GetValue();
    else if (const CEnumerationPtr enumeration{node})
        enumeration->GetIntValue();
    else if (const CStringPtr string{node})
        string->GetValue();
    else
        CCommandPtr(node)->Execute();
}

struct Row
{
    std::string nodes; ///< among them "Gain", which is used
    std::string text;  ///< behind "Node '", since each refusal begins with that
};

/// Twice, since the first time must leave the node map usable.
void expectRefusals(std::initializer_list<Row> rows)
{
    for (const auto &[nodes, text] : rows) {
        Camera camera{nodes + others};
        for (int time = 0; time < 2; ++time) {
            EXPECT_EQ(refusal([&] { use(camera.node("Gain")); }), "Node '" + text) << nodes.substr(0, 200);
            EXPECT_EQ(camera.value("One"), 1);
        }
    }
}

/// Gain refers to C1, that to C2, and so on.
std::string chain(int length)
{
    std::string nodes = gain("Integer", "<pValue>C1</pValue>");
    for (int step = 1; step < length; ++step)
        nodes += element("Integer", "C" + std::to_string(step),
                         "<pValue>C" + std::to_string(step + 1) + "</pValue>");
    return nodes + constant("C" + std::to_string(length), "5");
}

/// Each register asks the next one twice for its address: 2^60 visits, were they not counted.
std::string fork()
{
    std::string nodes = gain("Integer", "<pValue>K1</pValue>") + constant("K60", "1");
    for (int step = 1; step < 60; ++step) {
        const std::string next = "K" + std::to_string(step + 1);
        nodes += element("IntReg", "K" + std::to_string(step),
                         "<pAddress>" + next + "</pAddress><pAddress>" + next +
                             "</pAddress><Length>1</Length><pPort>Device</pPort>");
    }
    return nodes;
}

/// Each of forty formulas is within its limit, and all together are too much.
std::string work()
{
    std::string ones = "V";
    for (int step = 0; step < 8000; ++step)
        ones += "+1";
    std::string nodes = formula("K40", "One");
    for (int step = 0; step < 40; ++step)
        nodes += formula("K" + std::to_string(step), "K" + std::to_string(step + 1), ones);
    return nodes + gain("Integer", "<pValue>K0</pValue>");
}

constexpr const char *tooMuch = "Gain': leads to more than 10000 nodes, or to formulas of as much work";
const std::string badAddress = "Gain': its address lies outside 64 bits";

TEST(Hostile, NodesThatLeadToThemselvesAreRefused)
{
    const std::pair<const char *, std::string> rows[] = {
        {"pValue", gain("Integer", "<pValue>Gain</pValue>")},
        {"pValue", gain("String", "<pValue>Gain</pValue>")},
        {"pValue", gain("Enumeration", "<pValue>Gain</pValue>")},
        {"pAddress", reg("<pAddress>Gain</pAddress><Length>1</Length>")},
        {"pAddress", "<StructReg><pAddress>Gain</pAddress><Length>1</Length><pPort>Device</pPort>" +
                         element("StructEntry", "Gain", "<Bit>0</Bit>") + "</StructReg>"},
        {"pIndex", reg("<pIndex>Gain</pIndex><Length>1</Length>")},
        {"pOffset", reg("<pIndex pOffset='Gain'>One</pIndex><Length>1</Length>")},
        {"pLength", reg("<Address>0</Address><pLength>Gain</pLength>", "FloatReg")},
        {"pVariable", gain("Converter", "<pVariable Name='V'>Gain</pVariable><FormulaTo>V</FormulaTo>"
                                        "<FormulaFrom>V</FormulaFrom><pValue>One</pValue>")},
        {"pIndex", gain("Float", "<pIndex>Gain</pIndex><ValueDefault>0</ValueDefault>")},
        {"pValueIndexed",
         gain("Integer", "<pIndex>Zero</pIndex><pValueIndexed Index='0'>Gain</pValueIndexed>")},
        {"pValueDefault", gain("Integer", "<pIndex>Zero</pIndex><pValueDefault>Gain</pValueDefault>")}};
    for (const auto &[by, nodes] : rows)
        expectRefusals({{nodes, std::string{"Gain': "} + by + " leads back to itself (Gain > Gain)"}});
}

TEST(Hostile, CirclesAreToldWithTheirWay)
{
    expectRefusals({
        Row{formula("Gain", "Other") + element("Integer", "Other", "<pValue>Gain</pValue>"),
            "Gain': pVariable leads back to itself (Gain > Other > Gain)"},
        Row{reg("<IntSwissKnife><pVariable Name='V'>Gain</pVariable><Formula>V</Formula></IntSwissKnife>"
                "<Length>1</Length>"),
            "Gain': IntSwissKnife leads back to itself (Gain > Gain/IntSwissKnife > Gain)"},
        Row{gain("Float", "<pValue>Other</pValue>") + formula("Other", "Gain"),
            "Gain': pValue leads back to itself (Gain > Other > Gain)"},
        Row{gain("Float", "<pIsAvailable>Most</pIsAvailable><Value>1</Value><pMax>Most</pMax>") +
                formula("Most", "Gain", "V.Max"),
            "Gain': node 'Most': pVariable leads back to itself (Gain > Most > Gain > Most)"},
        Row{gain("Integer", "<pIsAvailable>Flag</pIsAvailable><Value>1</Value>") +
                element("Boolean", "Flag", "<pValue>Flag</pValue>"),
            "Gain': node 'Flag': pValue leads back to itself (Gain > Flag > Flag)"},
        Row{gain("Command", "<pIsLocked>Lock</pIsLocked><Value>1</Value><CommandValue>1</CommandValue>") +
                formula("Lock", "Lock"),
            "Gain': node 'Lock': pVariable leads back to itself (Gain > Lock > Lock)"},
        Row{gain("Integer", "<pValue>A</pValue>") + element("Integer", "A", "<pValue>B</pValue>") +
                element("Integer", "B", "<pValue>A</pValue>"),
            "Gain': node 'A': pValue leads back to itself (Gain > A > B > A)"},
    });
}

TEST(Hostile, SizesAreBounded)
{
    expectRefusals(
        {Row{chain(5000), "Gain': more than 100 nodes in a row (Gain > C1 > C2 > C3 > ... > C96 > C97 > C98 "
                          "> C99 > C100)"},
         Row{fork(), tooMuch}, Row{work(), tooMuch},
         Row{reg("<Address>0</Address><Length>0</Length>"),
             "Gain': a register of 0 bytes; possible are 1 to 16777216"},
         Row{reg("<Address>0</Address><Length>-4</Length>", "StringReg"),
             "Gain': a register of -4 bytes; possible are 1 to 16777216"},
         Row{reg("<Address>0</Address><Length>0x7FFFFFFFFFFFFFFF</Length>"),
             "Gain': a register of 9223372036854775807 bytes; possible are 1 to 16777216"},
         Row{reg("<Address>0</Address><Length>9</Length>"),
             "Gain': an integer in a register of 9 bytes; possible are 1 to 8"},
         Row{reg("<Address>0xFFFFFFFFFFFFFFFF</Address><Length>2</Length>"), badAddress},
         Row{reg("<Address>0xFFFFFFFFFFFFFFFF</Address><Address>1</Address><Length>1</Length>"), badAddress},
         Row{reg("<pAddress>Low</pAddress><Length>1</Length>"), badAddress + ", where 'Low' is -1"},
         Row{reg("<Address>-4</Address><Length>1</Length>"), badAddress},
         Row{reg("<pIndex Offset='0x4000000000000000'>Eight</pIndex><Length>1</Length>"),
             badAddress + ", where 'Eight' is 8"},
         Row{reg(oneByte + "<LSB>4</LSB><MSB>8</MSB>", "MaskedIntReg"),
             "Gain': bits 4 to 8 in a register of 1 bytes"},
         Row{reg(oneByte + "<Bit>-1</Bit>", "MaskedIntReg"),
             "Gain': bits -1 to -1 in a register of 1 bytes"}});
}

TEST(Hostile, FaultsAreToldWithTheirPlace)
{
    expectRefusals(
        {Row{gain("Integer", "<pValue>Nothing</pValue>"),
             "Gain': pValue names 'Nothing', which the description does not have"},
         Row{gain("Integer", "<pIsAvailable>Gone</pIsAvailable><Value>1</Value>"),
             "Gain': pIsAvailable names 'Gone', which the description does not have"},
         Row{constant("Gain", "1") + constant("Gain", "2"), "Gain' is defined more than once"},
         Row{gain("Integer", "<pValue>Two</pValue>") + constant("Two", "1") + constant("Two", "2"),
             "Gain': node 'Two' is defined more than once (Gain > Two)"},
         Row{gain("Integer", "<pValue>EnumEntry_Two_A</pValue>") +
                 element("Enumeration", "Two", "<EnumEntry Name='A'><Value>1</Value></EnumEntry>") +
                 element("Enumeration", "Two", "<EnumEntry Name='A'><Value>2</Value></EnumEntry>"),
             "Gain': node 'Two' is defined more than once (Gain > Two)"},
         Row{gain("Integer", "<pValue>Text</pValue>"),
             "Gain': pValue names 'Text', a String, which has no number"},
         Row{gain("String", "<pValue>One</pValue>"),
             "Gain': pValue names 'One', a Integer, which has no text"},
         Row{gain("Float", "<pIsAvailable>Go</pIsAvailable><Value>1</Value>") +
                 element("Command", "Go", "<Value>1</Value><CommandValue>1</CommandValue>"),
             "Gain': pIsAvailable names 'Go', a Command, which has no number"},
         Row{gain("IntReg", oneByte + "<pPort>Gain</pPort>"), "Gain': pPort names 'Gain', which is no port"},
         Row{gain("IntReg", oneByte), "Gain': a register without pPort"},
         Row{reg("<Length>1</Length>"), "Gain': a register without an address"},
         Row{reg("<Address>1</Address>"), "Gain': a register without a length"},
         Row{reg(oneByte + "<LSB>1</LSB>", "MaskedIntReg"),
             "Gain': a masked register without Bit, or LSB and MSB"},
         Row{gain("Integer", ""), "Gain': neither Value nor pValue"},
         Row{gain("Integer", "<pIndex>Zero</pIndex><ValueIndexed>1</ValueIndexed>"),
             "Gain': ValueIndexed: Index '' is not a 64-bit integer"},
         Row{constant("Gain", "12z"), "Gain': Value: '12z' is not a 64-bit integer"},
         Row{constant("Gain", "18446744073709551616"),
             "Gain': Value: '18446744073709551616' is not a 64-bit integer"},
         Row{gain("Integer", "<Value>1</Value><ImposedAccessMode>XX</ImposedAccessMode>"),
             "Gain': ImposedAccessMode: 'XX' is none of RO, WO and RW"},
         Row{reg(oneByte + "<Endianess>Middle</Endianess>"),
             "Gain': Endianess: 'Middle' is neither BigEndian nor LittleEndian"},
         Row{reg(oneByte + "<Cachable>Often</Cachable>"),
             "Gain': Cachable: 'Often' is none of NoCache, WriteThrough and WriteAround"},
         Row{gain("Integer", "<pValue>&#27;[2J&#155;2J\xc2\xa9&#127;</pValue>"),
             "Gain': pValue names '?[2J??2J\xc2\xa9?', which the description does not have"}});
}

TEST(Hostile, ChainsOfARealCamerasLengthAreNotRefused)
{
    Camera camera{chain(90)};
    EXPECT_EQ(camera.value("Gain"), 5);
}

TEST(Hostile, CirclesOfWritesEndBeforeTheDevice)
{
    Camera camera{gain("Integer", "<pValue>Reg</pValue><pValueCopy>Gain</pValueCopy>") +
                  element("IntReg", "Reg", at(0, 1, readWrite))};
    EXPECT_EQ(refusal([&] { camera.integer("Gain")->SetValue(1); }),
              "Node 'Gain': pValueCopy leads back to itself (Gain > Gain)");
}

TEST(Hostile, WritesToWhatIsComputedAreRefused)
{
    Camera camera{others + formula("Knife", "One") +
                  gain("Integer", "<Value>1</Value><pValueCopy>Knife</pValueCopy>")};
    EXPECT_EQ(refusal([&] { camera.integer("Gain")->SetValue(2); }),
              "Node 'Gain': pValueCopy names 'Knife', which can't be written");
}

TEST(Hostile, FaultyFeaturesDoNotHideTheOthers)
{
    Camera camera{others + gain("Integer", "") + constant("Two", "1") + constant("Two", "2") +
                  element("Category", "Root",
                          "<pFeature>Gain</pFeature><pFeature>Two</pFeature><pFeature>One</pFeature>")};
    GenApi_3_2_TVN::NodeList_t features;
    GenApi_3_2_TVN::CCategoryPtr(camera.node("Root"))->GetFeatures(features);
    EXPECT_EQ(features, GenApi_3_2_TVN::NodeList_t{camera.node("One")});
}

/// Were what they share read and kept by each entry without a limit, this would take minutes and gigabytes.
TEST(Hostile, EntriesOfAStructRegShareLittle)
{
    std::string entries;
    for (int entry = 0; entry < 5'000; ++entry)
        entries += element("StructEntry", "E" + std::to_string(entry), "<Bit>0</Bit>");
    const auto structReg = [&entries](const std::string &more) {
        return others + "<StructReg>" + entries + at(0, 1) + more + "</StructReg>";
    };
    const auto children = [](int count, const std::string &tag, bool areNumbered = false) {
        std::string made;
        for (int number = 0; number < count; ++number) {
            const std::string own = areNumbered ? tag + std::to_string(number) : tag;
            made += "<" + own + ">One</" + own + ">";
        }
        return made;
    };
    Camera camera{
        structReg(children(7, "pAddress") + children(1000, "pInvalidator") + children(53, "Tag", true))};
    GenApi_3_2_TVN::NodeList_t list;
    camera.nodeMap._GetNodes(list);
    EXPECT_GT(list.size(), 5'000U);
    camera.port.set(7, {1});
    EXPECT_EQ(camera.value("E4999"), 1);

    for (const std::string &more : {children(8, "pAddress"), children(62, "Tag", true),
                                    "<Unit>" + std::string(8200, 'm') + "</Unit>"}) {
        Camera greedy{structReg(more)};
        greedy.nodeMap._GetNodes(list);
        EXPECT_LT(list.size(), 10U);
        EXPECT_EQ(refusal([&] { greedy.value("E0"); }), "Node 'E0': its StructReg has more for its entries "
                                                        "than 64 children with 8 parts of an address and "
                                                        "8 KiB of text");
    }
}

/// A node that can't be made is not tried again for each reference to it.
TEST(Hostile, FailuresAreRemembered)
{
    std::string entries;
    std::string features;
    for (int count = 0; count < 5'000; ++count) {
        entries += "<EnumEntry Name='E" + std::to_string(count) + "'/>";
        features += "<pFeature>Gain</pFeature>";
    }
    Camera camera{gain("Enumeration", entries) + element("Category", "Root", features)};
    GenApi_3_2_TVN::NodeList_t list;
    GenApi_3_2_TVN::CCategoryPtr(camera.node("Root"))->GetFeatures(list);
    EXPECT_TRUE(list.empty());
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(refusal([&] { camera.node("Gain"); }), "Node 'Gain': neither Value nor pValue");
}

TEST(Hostile, LongNamesAreCutInMessages)
{
    const std::string name = std::string(63, 'n') + "\xc3\xa4" + std::string(1000, 'n');
    Camera camera{element("Integer", name, "")};
    EXPECT_EQ(refusal([&] { camera.node(name); }),
              "Node '" + std::string(63, 'n') + "...': neither Value nor pValue");
    const std::string fit(64, 'n');
    Camera other{constant(fit, "x") + constant(name, "1")};
    EXPECT_EQ(refusal([&] { other.node(fit); }), "Node '" + fit + "': Value: 'x' is not a 64-bit integer");
    EXPECT_EQ(other.node(name)->GetName(), name.c_str());
}

TEST(Hostile, LongTextsAreCutInMessages)
{
    const std::string text(400, 'n');
    const std::string cut = "'" + text.substr(0, 64) + "...'";
    Camera camera{gain("Integer", "<pValue>" + text + "</pValue>") + constant("Number", text)};
    EXPECT_EQ(refusal([&] { camera.value("Gain"); }),
              "Node 'Gain': pValue names " + cut + ", which the description does not have");
    EXPECT_EQ(refusal([&] { camera.value("Number"); }),
              "Node 'Number': Value: " + cut + " is not a 64-bit integer");
}

} // namespace
