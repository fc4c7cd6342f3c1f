// SPDX-License-Identifier: MIT
// Enumerations and their entries.
#include "Camera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace GenApi_3_2_TVN;
using testing::ElementsAre;

namespace {

std::string entry(const std::string &name, const std::string &value, const std::string &more = "")
{
    return element("EnumEntry", name, "<Value>" + value + "</Value>" + more);
}

/// "Mode" over a register at 0. "Slow" and "Fast" share a value; which of them is there, "IsFast" says.
const std::string mode =
    constant("IsFast", "1") +
    element("IntSwissKnife", "IsSlow", "<pVariable Name='F'>IsFast</pVariable><Formula>F = 0</Formula>") +
    "<Enumeration Name='Mode'>" + entry("Off", "-1", "<NumericValue>0.25</NumericValue>") +
    entry("Slow", "3", "<pIsAvailable>IsSlow</pIsAvailable>") +
    entry("Fast", "3", "<pIsAvailable>IsFast</pIsAvailable><Symbolic>Very Fast</Symbolic>") +
    entry("Twice", "4") + entry("Twice", "5") + entry("Broken", "x") +
    entry("Once", "6", "<pIsImplemented>IsSlow</pIsImplemented><IsSelfClearing>Yes</IsSelfClearing>") +
    "<pValue>Raw</pValue></Enumeration>" +
    element("IntReg", "Raw", at(0, 1, readWrite + "<Sign>Signed</Sign>"));

std::string symbolic(IEnumEntry *entry)
{
    return entry != nullptr ? entry->GetSymbolic().c_str() : "none";
}

TEST(Enumeration, TellsItsValueAndTheEntryOfIt)
{
    Camera camera{
        mode + element("String", "Text", "<pValue>Mode</pValue>") +
        element("Enumeration", "Own", "<Value>2</Value>" + entry("Two", "2") + entry("Second", "2"))};
    const CEnumerationPtr e = camera.enumeration("Mode");
    camera.port.set(0, {0xff});
    EXPECT_EQ(e->GetIntValue(), -1);
    EXPECT_EQ(symbolic(e->GetCurrentEntry()), "Off");
    EXPECT_EQ(symbolic(camera.enumeration("Own")->GetCurrentEntry()), "Two") << "of two the first";
    e->SetIntValue(3);
    EXPECT_EQ(symbolic(e->GetCurrentEntry()), "Very Fast");
    EXPECT_EQ(camera.text("Text"), "Very Fast");
    camera.integer("IsFast")->SetValue(0);
    EXPECT_EQ(symbolic(e->GetCurrentEntry()), "Slow") << "of two the one that is available";
    camera.string("Text")->SetValue("Off");
    EXPECT_EQ(e->GetIntValue(), -1);
    camera.port.set(0, {9});
    EXPECT_EQ(symbolic(e->GetCurrentEntry(false, true)), "none");
    EXPECT_EQ(refusal([&] { e->GetIntValue(true); }), "Node 'Mode': 9 is the value of no entry");
    EXPECT_EQ(refusal([&] { camera.text("Text"); }),
              "Node 'Text': node 'Mode': 9 is the value of no entry (Text > Mode)");
    EXPECT_EQ(refusal([&] { camera.string("Text")->SetValue("Up"); }),
              "Node 'Text': node 'Mode': 'Up' is none of its entries (Text > Mode)");
}

TEST(Enumeration, ListsItsEntriesAndFindsThem)
{
    Camera camera{mode};
    const CEnumerationPtr e = camera.enumeration("Mode");
    GenICam_3_2_TVN::gcstring_vector symbolics;
    e->GetSymbolics(symbolics);
    EXPECT_THAT(symbolics, ElementsAre("Off", "Very Fast", "Twice", "Twice"));
    Camera faulty{"<Enumeration Name='Mode'><Value>2</Value>" +
                  entry("A", "1", "<pIsAvailable>Nowhere</pIsAvailable>") + entry("B", "2") +
                  "</Enumeration>"};
    faulty.enumeration("Mode")->GetSymbolics(symbolics);
    EXPECT_THAT(symbolics, ElementsAre("B"));
    const std::string longName(1100, 'n');
    Camera wordy{"<Enumeration Name='Mode'><Value>2</Value>" + entry(longName, "2") + "</Enumeration>"};
    EXPECT_NE(wordy.enumeration("Mode")->GetEntryByName(longName.c_str()), nullptr);
    EXPECT_EQ(wordy.node("EnumEntry_Mode_" + longName), nullptr);
    NodeList_t nodes;
    e->GetEntries(nodes);
    EXPECT_EQ(nodes.size(), 6U) << "without the broken one";

    EXPECT_EQ(e->GetEntryByName("Off")->GetNumericValue(), 0.25);
    EXPECT_EQ(e->GetEntryByName("Very Fast")->GetNumericValue(), 3);
    EXPECT_EQ(e->GetEntryByName("Fast"), nullptr) << "its symbolic is another";
    EXPECT_TRUE(e->GetEntryByName("Once")->IsSelfClearing());
    EXPECT_FALSE(e->GetEntryByName("Off")->IsSelfClearing());
    EXPECT_EQ(e->GetEntry(7), nullptr);
    EXPECT_EQ(dynamic_cast<IBase *>(e->GetEntry(3)),
              static_cast<IBase *>(camera.node("EnumEntry_Mode_Fast")));
    EXPECT_EQ(camera.node("EnumEntry_Mode_Slow")->GetAccessMode(), NA);
    EXPECT_EQ(refusal([&] { e->GetEntryByName("Twice"); }),
              "Node 'Mode': its entry 'Twice' is defined more than once");
    EXPECT_EQ(refusal([&] { camera.node("EnumEntry_Mode_Twice"); }),
              "Node 'Mode': its entry 'Twice' is defined more than once");
    EXPECT_EQ(refusal([&] { camera.node("EnumEntry_Mode_Broken"); }),
              "Node 'EnumEntry_Mode_Broken': Value: 'x' is not a 64-bit integer");
}

TEST(Enumeration, TakesTheValuesOfEntriesThatAreThere)
{
    Camera camera{mode};
    const CEnumerationPtr e = camera.enumeration("Mode");
    EXPECT_EQ(refusal([&] { e->SetIntValue(6); }), "Node 'Mode': its entry 'Once' is not implemented");
    camera.integer("IsFast")->SetValue(0);
    EXPECT_EQ(refusal([&] { e->SetIntValue(2); }), "Node 'Mode': 2 is the value of no entry");
    e->SetIntValue(6);
    EXPECT_THAT(camera.port.get(0, 1), ElementsAre(6));
    e->SetIntValue(2, false);
    EXPECT_THAT(camera.port.get(0, 1), ElementsAre(2)) << "unverified";
}

TEST(Enumeration, IsANumberForOtherNodes)
{
    Camera camera{
        mode +
        element("IntSwissKnife", "Knife",
                "<pVariable Name='M'>Mode</pVariable>"
                "<Formula>M.Enum.Fast * 1000 + M.Min * 100 + M.Max * 10 + M</Formula>") +
        element("IntSwissKnife", "Lost", "<pVariable Name='M'>Mode</pVariable><Formula>M.Enum.Up</Formula>") +
        element("Integer", "Number", "<pValue>Mode</pValue>") +
        element("Integer", "Fixed", "<pValue>EnumEntry_Mode_Off</pValue>")};
    camera.integer("Number")->SetValue(5);
    EXPECT_EQ(camera.value("Number"), 5);
    EXPECT_EQ(camera.value("Knife"), 3000 - 100 + 60 + 5);
    EXPECT_EQ(camera.value("Fixed"), -1);
    EXPECT_EQ(camera.integer("Fixed")->GetAccessMode(), RO);
    EXPECT_EQ(refusal([&] { camera.value("Lost"); }), "Node 'Lost': Formula: 'Mode' has no entry 'Up'");
}

} // namespace
