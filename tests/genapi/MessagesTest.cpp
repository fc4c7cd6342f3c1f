// SPDX-License-Identifier: MIT
// Failures deep inside: each names the feature that was asked for, the way down to the cause, and the values that made
// it. And what descriptions of the field have that is met by no more than a row each.
#include "Camera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace GenApi_3_2_TVN;
using testing::ElementsAre;

namespace {

std::string over(const std::string &name, const std::string &inner, const std::string &more = "")
{
    return element("Integer", name, "<pValue>" + inner + "</pValue>" + more);
}

std::string entry(const std::string &name, const std::string &children)
{
    return element("EnumEntry", name, children);
}

TEST(Messages, NameTheFeatureTheWayAndTheValues)
{
    const std::string shift = element("IntConverter", "Shift",
                                      "<pVariable Name='BY'>Shifts</pVariable><FormulaTo>FROM</FormulaTo>"
                                      "<FormulaFrom>TO &lt;&lt; BY</FormulaFrom><pValue>One</pValue>");
    const std::pair<std::string, const char *> rows[] = {
        {over("Gain", "Half") + over("Half", "Shift") + shift,
         "Node 'Gain': node 'Shift': FormulaFrom: shift by 4294967295 bits, where TO is 1, BY is 4294967295 "
         "(Gain > Half > Shift)"},
        {over("Gain", "Raw") + over("Raw", "None"),
         "Node 'Gain': node 'Raw': pValue names 'None', which the description does not have (Gain > Raw)"},
        {over("Gain", "Raw") + over("Raw", "Bare") + element("Integer", "Bare", ""),
         "Node 'Gain': node 'Bare': neither Value nor pValue (Gain > Raw > Bare)"},
        {over("Gain", "Raw") + element("IntReg", "Raw",
                                       "<Address>-1</Address><pAddress>One</pAddress><pAddress>Low"
                                       "</pAddress><Length>1</Length><pPort>Device</pPort>"),
         "Node 'Gain': node 'Raw': its address lies outside 64 bits, where 'One' is 1, 'Low' is -1 (Gain > "
         "Raw)"},
        {over("Gain", "Raw") +
             element("IntReg", "Raw", "<pAddress>Low</pAddress><Length>1</Length><pPort>Chunk</pPort>"),
         "Node 'Gain': node 'Raw': port 'Chunk' is not connected (Gain > Raw)"},
        {over("Gain", "One", "<pIsLocked>One</pIsLocked><pIsAvailable>Zero</pIsAvailable>"),
         "Node 'Gain': not available at present, since 'Zero' is 0"},
    };
    for (const auto &[nodes, text] : rows) {
        Camera camera{nodes + "<Port Name='Chunk'/>" + constant("Zero", "0") + constant("One", "1") +
                      constant("Low", "-1") + constant("Shifts", "4294967295")};
        for (int time = 0; time < 2; ++time)
            EXPECT_EQ(refusal([&] { camera.value("Gain"); }), text);
    }
}

TEST(Messages, OfWritesSayWhatForbidsThem)
{
    Camera camera{
        constant("Lock", "3") + over("Inner", "Raw", "<pIsLocked>Lock</pIsLocked>") + over("Outer", "Inner") +
        element("IntReg", "Raw", at(0, 1, readWrite)) +
        element("MaskedIntReg", "Bit", at(1, 1, readWrite + "<Bit>0</Bit>")) +
        element("Command", "Go",
                "<pIsLocked>Lock</pIsLocked><pValue>Raw</pValue><CommandValue>1</CommandValue>") +
        element("Command", "Knock",
                "<pIsLocked>Lock</pIsLocked><Value>0</Value><CommandValue>1</CommandValue>") +
        over("Flag", "Bit") +
        element("Float", "Exposure", "<Value>5</Value><Min>10</Min><Max>20</Max><Unit>us</Unit>") +
        "<SwissKnife Name='Endless'><Formula>1/0</Formula></SwissKnife>" +
        element("Float", "Shut", "<Value>5</Value><pMin>Endless</pMin><pMax>Endless</pMax><Unit>dB</Unit>") +
        element("Integer", "Width", "<Value>8</Value><Min>8</Min><Max>64</Max><Inc>8</Inc><Unit>px</Unit>")};
    EXPECT_EQ(refusal([&] { camera.command("Go")->Execute(); }), "Node 'Go': locked by 'Lock', which is 3");
    EXPECT_EQ(refusal([&] { camera.command("Knock")->Execute(); }),
              "Node 'Knock': locked by 'Lock', which is 3");
    EXPECT_EQ(refusal([&] { camera.integer("Outer")->SetValue(1); }),
              "Node 'Outer': locked by 'Lock', which is 3");
    EXPECT_EQ(refusal([&] { camera.integer("Flag")->SetValue(6, false); }),
              "Node 'Flag': node 'Bit': 6 does not fit into its 1 bit, which takes 0 to 1 (Flag > Bit)");
    EXPECT_EQ(refusal([&] { camera.real("Exposure")->SetValue(5); }),
              "Node 'Exposure': 5 us lies outside its limits, at present 10 us to 20 us");
    EXPECT_EQ(
        refusal([&] { camera.real("Shut")->SetValue(5); }),
        "Node 'Shut': 5 dB lies outside its limits, at present inf dB to inf dB, between which nothing lies");
    EXPECT_EQ(refusal([&] { camera.integer("Width")->SetValue(12); }),
              "Node 'Width': 12 px is not 8 px plus a multiple of 8 px");
}

/// Its names are as long as they can be shown, and longer.
TEST(Messages, OfALongWayAreBounded)
{
    const std::string longName(100, 'n');
    std::string nodes = element("Integer", longName + "99", "");
    for (int step = 0; step < 99; ++step)
        nodes += over(longName + std::to_string(step), longName + std::to_string(step + 1));
    Camera camera{nodes};
    const std::string text = refusal([&] { camera.value(longName + "0"); });
    EXPECT_LT(text.size(), 1024U);
    EXPECT_THAT(text, testing::HasSubstr("neither Value nor pValue"));
    EXPECT_THAT(text, testing::HasSubstr(" > ... > "));
}

TEST(Field, EntriesAreNamedInFormulas)
{
    Camera camera{"<Enumeration Name='Mode'>" + entry("Off", "<Value>7</Value>") +
                  entry("On", "<Value>9</Value>") + "<Value>9</Value></Enumeration>" +
                  constant("Plain", "3") +
                  element("IntSwissKnife", "X",
                          "<pVariable Name='M'>Mode</pVariable><pVariable Name='M.Entry.On'>Plain</pVariable>"
                          "<Formula>M.Entry.Off * 100 + M.Enum.On * 10 + M.Entry.On</Formula>")};
    EXPECT_EQ(camera.value("X"), 700 + 90 + 3) << "a variable that is declared with such a name wins";
}

TEST(Field, AFloatOverAnEnumerationMeansItsQuantities)
{
    Camera camera{
        "<Enumeration Name='Gain'>" + entry("Low", "<Value>1</Value><NumericValue>0.5</NumericValue>") +
        entry("Mid", "<Value>2</Value><NumericValue>2</NumericValue>") +
        entry("High", "<Value>0</Value><NumericValue>8.25</NumericValue>") +
        entry("Gone", "<pIsAvailable>No</pIsAvailable><Value>5</Value><NumericValue>6</NumericValue>") +
        "<pValue>Raw</pValue></Enumeration>" + constant("No", "0") +
        element("IntReg", "Raw", at(0, 1, readWrite)) + element("Float", "Level", "<pValue>Gain</pValue>") +
        over("Number", "Gain")};
    const CFloatPtr level = camera.real("Level");
    EXPECT_EQ(level->GetValue(), 8.25);
    EXPECT_EQ(camera.value("Number"), 0);
    EXPECT_EQ(level->GetMin(), 0.5);
    EXPECT_EQ(level->GetMax(), 8.25);
    level->SetValue(1.5);
    EXPECT_THAT(camera.port.get(0, 1), ElementsAre(2));
    level->SetValue(6);
    EXPECT_THAT(camera.port.get(0, 1), ElementsAre(0)) << "the nearest of those that are there";
    camera.port.set(0, {9});
    camera.nodeMap._InvalidateNodes();
    EXPECT_EQ(refusal([&] { level->GetValue(); }),
              "Node 'Level': node 'Gain': 9 is the value of no entry (Level > Gain)");
    EXPECT_EQ(
        refusal([&] { level->SetValue(std::numeric_limits<double>::quiet_NaN(), false); }),
        "Node 'Level': node 'Gain': nan is near the quantity of no entry that is available (Level > Gain)");
}

TEST(Field, PortsSwapWithinQuadlets)
{
    const auto turned = [](const std::string &kind, const std::string &name, int length,
                           const std::string &more) {
        return element(kind, name,
                       "<Address>0</Address><Length>" + std::to_string(length) + "</Length>" + readWrite +
                           "<pPort>Turned</pPort>" + more);
    };
    Camera camera{element("Port", "Turned", "<SwapEndianess>Yes</SwapEndianess>") +
                  turned("IntReg", "Whole", 8, bigEndian) + turned("IntReg", "Little", 8, "") +
                  turned("FloatReg", "Real", 8, "") + turned("StringReg", "Text", 6, "") +
                  turned("Register", "Bytes", 8, "")};
    camera.nodeMap._Connect(&camera.port, "Turned");
    camera.port.set(0, {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88});
    EXPECT_EQ(static_cast<std::uint64_t>(camera.value("Whole")), 0x4433221188776655U);
    EXPECT_EQ(static_cast<std::uint64_t>(camera.value("Little")), 0x5566778811223344U);
    std::vector<std::uint8_t> bytes(8);
    camera.registerOf("Bytes")->Get(bytes.data(), 8);
    EXPECT_THAT(bytes, ElementsAre(0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88))
        << "as the device has them";
    camera.integer("Whole")->SetValue(0x0102030405060708);
    EXPECT_THAT(camera.port.get(0, 8), ElementsAre(4, 3, 2, 1, 8, 7, 6, 5));
    camera.real("Real")->SetValue(1);
    EXPECT_THAT(camera.port.get(0, 8), ElementsAre(0, 0, 0, 0, 0x3f, 0xf0, 0, 0));
    camera.string("Text")->SetValue("abcde");
    EXPECT_THAT(camera.port.get(0, 6), ElementsAre('d', 'c', 'b', 'a', 0, 'e'));
    EXPECT_EQ(camera.text("Text"), "abcde");
}

TEST(Field, CopiesNarrowLimitsAndTextsMayHaveNoLength)
{
    Camera camera{
        over("Gain", "Wide", "<pValueCopy>Narrow</pValueCopy><pValueCopy>Wide</pValueCopy>") +
        element("IntReg", "Wide", at(0, 1, readWrite + "<Sign>Signed</Sign>")) +
        element("MaskedIntReg", "Narrow", at(1, 1, readWrite + "<LSB>0</LSB><MSB>3</MSB>")) +
        constant("Length", "0") +
        element("StringReg", "Firmware",
                "<Address>8</Address><pLength>Length</pLength>" + readWrite + "<pPort>Device</pPort>") +
        element("IntReg", "Number", "<Address>8</Address><pLength>Length</pLength><pPort>Device</pPort>")};
    EXPECT_EQ(camera.integer("Gain")->GetMin(), 0);
    EXPECT_EQ(camera.integer("Gain")->GetMax(), 15);
    EXPECT_EQ(refusal([&] { camera.integer("Gain")->SetValue(16); }),
              "Node 'Gain': 16 lies outside its limits, at present 0 to 15");
    EXPECT_EQ(camera.text("Firmware"), "");
    EXPECT_EQ(camera.string("Firmware")->GetMaxLength(), 0);
    camera.string("Firmware")->SetValue("");
    EXPECT_EQ(refusal([&] { camera.string("Firmware")->SetValue("1"); }),
              "Node 'Firmware': a text of 1 bytes; possible are 0");
    EXPECT_EQ(refusal([&] { camera.value("Number"); }),
              "Node 'Number': a register of 0 bytes; possible are 1 to 16777216");
    EXPECT_THAT(camera.port.accesses, ElementsAre());
}

} // namespace
