// SPDX-License-Identifier: MIT
// Descriptions written to take the time, the memory or the stack of their reader, too large to stand in
// conversations/faults.txt.
#include "Conversation.h"

#include <gtest/gtest.h>

namespace {

const std::string link = "<Integer Name='K#'><pValue>K@</pValue></Integer>";

TEST(Hostile, WaysAreBounded)
{
    const std::string tooMuch = "Node 'K0': leads to more than 10000 nodes, or to formulas of as much work";
    const std::string fork =
        "<IntReg Name='K#'><pAddress>K@</pAddress><pAddress>K@</pAddress><Length>1</Length>"
        "<pPort>Device</pPort></IntReg>";
    const std::string work = "<IntSwissKnife Name='K#'><pVariable Name='V'>K@</pVariable><Formula>V" +
                             repeated(8000, "+1") + "</Formula></IntSwissKnife>";
    const auto overEntries = [](int count, const std::string &entry) {
        return "<Enumeration Name='M'><Value>1</Value>" + repeated(count, entry) + "</Enumeration>" +
               repeated(60, "<Float Name='F#'><pValue>M</pValue></Float>") + "<SwissKnife Name='K0'>" +
               repeated(60, "<pVariable Name='V#'>F#</pVariable>") + "<Formula>0" + repeated(60, "+V#.Max") +
               "</Formula></SwissKnife>";
    };
    const std::pair<std::string, std::string> rows[] = {
        {repeated(90, link) + constant("K90", "5"), "5"}, // as real cameras have them
        {repeated(5000, link),
         "Node 'K0': more than 100 nodes in a row (K0 > K1 > K2 > K3 > ... > K96 > K97 > K98 > K99 > K100)"},
        {repeated(99, link) + "<Integer Name='K99'/>",
         "Node 'K0': node 'K99': neither Value nor pValue (K0 > K1 > K2 > K3 > ... > K95 > K96 > K97 > K98 > "
         "K99)"},
        {repeated(60, fork) + constant("K60", "1"), tooMuch}, // were they not counted, 2^60
        {repeated(40, work) + constant("K40", "1"), tooMuch},
        {overEntries(9'000, "<EnumEntry Name='#'><Value>#</Value></EnumEntry>"), tooMuch},
        {overEntries(20'000, "<EnumEntry/>"), tooMuch}};
    for (const auto &[nodes, text] : rows) {
        Camera camera{nodes};
        for (int time = 0; time < 2; ++time)
            EXPECT_EQ(answer(camera, "get K0"), text) << nodes.substr(0, 200);
    }
}

/// Were what they share read and kept by each entry without a limit, this would take minutes and gigabytes.
TEST(Hostile, EntriesOfAStructRegShareLittle)
{
    const std::string begin = constant("One", "1") + "<StructReg>" +
                              repeated(5'000, "<StructEntry Name='E#'><Bit>0</Bit></StructEntry>") + at(0, 1);
    const std::string address = "<pAddress>One</pAddress>";
    Camera camera{begin + repeated(7, address) + repeated(1000, "<pInvalidator>One</pInvalidator>") +
                  repeated(53, "<Tag#>One</Tag#>") + "</StructReg>"};
    GenApi_3_2_TVN::NodeList_t list;
    camera.nodeMap._GetNodes(list);
    EXPECT_GT(list.size(), 5'000U);
    camera.port.set(7, {1});
    EXPECT_EQ(camera.value("E4999"), 1);

    for (const std::string &more : {repeated(8, address), repeated(62, "<Tag#>One</Tag#>"),
                                    "<Unit>" + std::string(8200, 'm') + "</Unit>"}) {
        Camera greedy{begin + more + "</StructReg>"};
        greedy.nodeMap._GetNodes(list);
        EXPECT_LT(list.size(), 10U);
        EXPECT_EQ(answer(greedy, "get E0"),
                  "Node 'E0': its StructReg has more for its entries than 64 children "
                  "with 8 parts of an address and 8 KiB of text");
    }
}

/// A node that can't be made is not tried again for each reference to it.
TEST(Hostile, FailuresAreRemembered)
{
    Camera camera{element("Enumeration", "Gain", repeated(5'000, "<EnumEntry Name='E#'/>")) +
                  element("Category", "Root", repeated(5'000, "<pFeature>Gain</pFeature>"))};
    EXPECT_EQ(answer(camera, "features Root"), "");
}

TEST(Hostile, LongNamesAndTextsAreCut)
{
    const std::string name = std::string(63, 'n') + "\xc3\xa4" + std::string(1000, 'n');
    const std::string fit(64, 'n');
    const std::string entry(1100, 'e');
    Camera camera{
        element("Integer", name, "") + constant(fit, "x") + constant(fit + "n", "1") +
        element("Integer", "Gain", "<pValue>" + entry + "</pValue>") +
        element("Enumeration", "Mode", "<Value>2</Value>" + element("EnumEntry", entry, "<Value>2</Value>"))};
    EXPECT_EQ(answer(camera, "get " + name),
              "Node '" + std::string(63, 'n') + "...': neither Value nor pValue");
    EXPECT_EQ(answer(camera, "get " + fit), "Node '" + fit + "': Value: 'x' is not a 64-bit integer");
    EXPECT_EQ(camera.node(fit + "n")->GetName(), (fit + "n").c_str());
    EXPECT_EQ(answer(camera, "get Gain"), "Node 'Gain': pValue names '" + std::string(64, 'e') +
                                              "...', which the description does not have");
    EXPECT_EQ(answer(camera, "entry Mode"), entry);
    EXPECT_EQ(camera.node("EnumEntry_Mode_" + entry), nullptr) << "no name to take apart";
}

TEST(Hostile, NumbersThatNoDoubleHoldsEndAtItsLimits)
{
    const std::string zeros(400, '0');
    const std::pair<std::string, const char *> rows[] = {{"-" + std::string(400, '9'), "-inf"},
                                                         {"0." + zeros + "1e+5", "0"},
                                                         {"0." + zeros + "1e99999999999999999999", "inf"},
                                                         {"9." + zeros + "1E-9223372036854775807", "0"}};
    for (const auto &[text, number] : rows) {
        Camera camera{element("Float", "Gain", "<Value>" + text + "</Value>")};
        EXPECT_EQ(answer(camera, "get Gain"), number) << text;
    }
}

TEST(Hostile, CachesAreBounded)
{
    Camera camera{
        element("StringReg", "File", at(0, 65537)) +
        element("IntReg", "Dependent", at(1, 1, "<pInvalidator>File</pInvalidator>")) +
        repeated(257, "<StringReg Name='T#'><Address>#</Address><Length>65536</Length><pPort>Device</pPort>"
                      "</StringReg>")};
    camera.value("Dependent");
    for (int table = 0; table < 255; ++table)
        camera.text("T" + std::to_string(table));
    std::string reads;
    for (const char *table : {"T0", "T254", "T255", "T256", "T256", "T0"})
        reads += answer(camera, std::string("reads ") + table);
    EXPECT_EQ(reads, "001101") << "16 MiB in all: what came before has made room";
    EXPECT_EQ(answer(camera, "reads File"), "1") << "64 KiB each";
    EXPECT_EQ(answer(camera, "reads Dependent"), "1") << "the large one may have changed";
    EXPECT_EQ(answer(camera, "reads File"), "1");
}

} // namespace
