// SPDX-License-Identifier: MIT
// Descriptions that are wrong, or written to break their reader: each ends in words that name the node, the
// way or the place, and leaves the node map usable.
#include "Camera.h"

#include <gtest/gtest.h>

namespace {

std::string integer(const std::string &name, const std::string &children)
{
    return "<Integer Name='" + name + "'>" + children + "</Integer>";
}

std::string reg(const std::string &children, const std::string &name = "Reg")
{
    return "<IntReg Name='" + name + "'>" + children + "<pPort>Device</pPort></IntReg>";
}

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
        CCommandPtr
        {
            node
            } -> Execute();
}

struct HostileRow
{
    const char *name;
    std::string nodes; ///< among them "Gain", which is used
    const char *text;
};

void PrintTo(const HostileRow &row, std::ostream *out)
{
    *out << row.name;
}

class HostileNode : public testing::TestWithParam<HostileRow>
{};

TEST_P(HostileNode, IsRefusedWithWords)
{
    Camera camera{GetParam().nodes + integer("Sound", "<Value>1</Value>")};
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(refusal([&] { use(camera.node("Gain")); }), GetParam().text);
        EXPECT_EQ(camera.value("Sound"), 1);
    }
}

/// Gain refers to C1, that to C2, and so on.
std::string chain(int length)
{
    std::string nodes = integer("Gain", "<pValue>C1</pValue>");
    for (int step = 1; step < length; ++step)
        nodes += integer("C" + std::to_string(step), "<pValue>C" + std::to_string(step + 1) + "</pValue>");
    return nodes + integer("C" + std::to_string(length), "<Value>5</Value>");
}

/// Each formula asks the next one twice: 2^60 visits, were they not counted.
std::string fork()
{
    std::string nodes = integer("Gain", "<pValue>K1</pValue>") + integer("K60", "<Value>1</Value>");
    for (int step = 1; step < 60; ++step)
        nodes += "<IntSwissKnife Name='K" + std::to_string(step) + "'><pVariable Name='N'>K" +
                 std::to_string(step + 1) + "</pVariable><Formula>N + N</Formula></IntSwissKnife>";
    return nodes;
}

/// Each of forty formulas is within its limit, and all together are too much.
std::string work()
{
    std::string sum;
    for (int step = 0; step < 8000; ++step)
        sum += "1+";
    std::string nodes;
    std::string variables;
    for (int number = 0; number < 40; ++number) {
        const std::string name = "K" + std::to_string(number);
        nodes += "<SwissKnife Name='" + name + "'><Formula>" + sum + "1</Formula></SwissKnife>";
        variables += "<pVariable Name='" + name + "'>" + name + "</pVariable>";
        sum.replace(0, 2, "2+");
    }
    std::string formula;
    for (int number = 0; number < 40; ++number)
        formula += "K" + std::to_string(number) + "+";
    return nodes + "<SwissKnife Name='Gain'>" + variables + "<Formula>" + formula +
           "0</Formula></SwissKnife>";
}

const std::string oneByte = "<Address>0</Address><Length>1</Length>";

INSTANTIATE_TEST_SUITE_P(
    Circles, HostileNode,
    testing::Values(
        HostileRow{"by_itself", integer("Gain", "<pValue>Gain</pValue>"),
                   "Node 'Gain': pValue leads back to itself (Gain > Gain)"},
        HostileRow{"by_an_address",
                   integer("Gain", "<pValue>Reg</pValue>") +
                       reg("<pAddress>Gain</pAddress><Length>1</Length>"),
                   "Node 'Gain': pValue leads back to itself (Gain > Reg > Gain)"},
        HostileRow{"by_an_index",
                   integer("Gain", "<pValue>Reg</pValue>") + reg("<pIndex>Gain</pIndex><Length>1</Length>"),
                   "Node 'Gain': pValue leads back to itself (Gain > Reg > Gain)"},
        HostileRow{"by_an_index_offset",
                   integer("Gain", "<pValue>Reg</pValue>") + integer("One", "<Value>1</Value>") +
                       reg("<pIndex pOffset='Reg'>One</pIndex><Length>1</Length>"),
                   "Node 'Reg': pOffset leads back to itself (Reg > Reg)"},
        HostileRow{"by_a_length",
                   integer("Gain", "<pValue>Reg</pValue>") +
                       reg("<Address>0</Address><pLength>Gain</pLength>"),
                   "Node 'Gain': pValue leads back to itself (Gain > Reg > Gain)"},
        HostileRow{"by_a_variable",
                   "<IntSwissKnife Name='Gain'><pVariable "
                   "Name='V'>Other</pVariable><Formula>V</Formula></IntSwissKnife>" +
                       integer("Other", "<pValue>Gain</pValue>"),
                   "Node 'Gain': pVariable leads back to itself (Gain > Other > Gain)"},
        HostileRow{
            "by_an_inline_formula",
            "<IntReg Name='Gain'><IntSwissKnife><pVariable Name='V'>Gain</pVariable><Formula>V</Formula>"
            "</IntSwissKnife><Length>1</Length><pPort>Device</pPort></IntReg>",
            "Node 'Gain': IntSwissKnife leads back to itself (Gain > Gain/IntSwissKnife > Gain)"},
        HostileRow{"behind_another_node",
                   integer("Gain", "<pValue>A</pValue>") + integer("A", "<pValue>B</pValue>") +
                       integer("B", "<pValue>A</pValue>"),
                   "Node 'A': pValue leads back to itself (A > B > A)"},
        HostileRow{"of_conditions",
                   integer("Gain", "<pIsAvailable>Flag</pIsAvailable><Value>1</Value>") +
                       "<Boolean Name='Flag'><pValue>Flag</pValue></Boolean>",
                   "Node 'Flag': pValue leads back to itself (Flag > Flag)"},
        HostileRow{
            "of_a_lock",
            "<Command Name='Gain'><pIsLocked>Lock</pIsLocked><Value>1</Value><CommandValue>1</CommandValue>"
            "</Command><IntSwissKnife Name='Lock'><pVariable Name='V'>Lock</pVariable>"
            "<Formula>V</Formula></IntSwissKnife>",
            "Node 'Lock': pVariable leads back to itself (Lock > Lock)"},
        HostileRow{"by_a_text", "<String Name='Gain'><pValue>Gain</pValue></String>",
                   "Node 'Gain': pValue leads back to itself (Gain > Gain)"},
        HostileRow{
            "by_a_range",
            "<Float Name='Gain'><pIsAvailable>Most</pIsAvailable><Value>1</Value><pMax>Most</pMax></Float>"
            "<SwissKnife Name='Most'><pVariable Name='G'>Gain</pVariable><Formula>G.Max</Formula>"
            "</SwissKnife>",
            "Node 'Most': pVariable leads back to itself (Most > Gain > Most)"},
        HostileRow{"by_floats",
                   "<Float Name='Gain'><pValue>A</pValue></Float><SwissKnife Name='A'>"
                   "<pVariable Name='V'>Gain</pVariable><Formula>V</Formula></SwissKnife>",
                   "Node 'Gain': pValue leads back to itself (Gain > A > Gain)"},
        HostileRow{"by_an_enumeration", "<Enumeration Name='Gain'><pValue>Gain</pValue></Enumeration>",
                   "Node 'Gain': pValue leads back to itself (Gain > Gain)"},
        HostileRow{"by_an_indexed_value",
                   integer("Gain", "<pIndex>Zero</pIndex><pValueIndexed Index='0'>Gain</pValueIndexed>") +
                       integer("Zero", "<Value>0</Value>"),
                   "Node 'Gain': pValueIndexed leads back to itself (Gain > Gain)"},
        HostileRow{"by_the_index_of_a_value",
                   integer("Gain", "<pIndex>Gain</pIndex><ValueDefault>0</ValueDefault>"),
                   "Node 'Gain': pIndex leads back to itself (Gain > Gain)"},
        HostileRow{"by_a_default",
                   integer("Gain", "<pIndex>Zero</pIndex><pValueDefault>Gain</pValueDefault>") +
                       integer("Zero", "<Value>0</Value>"),
                   "Node 'Gain': pValueDefault leads back to itself (Gain > Gain)"},
        HostileRow{"by_an_entry_of_a_structure",
                   "<StructReg><pAddress>Gain</pAddress><Length>1</Length><pPort>Device</pPort>"
                   "<StructEntry Name='Gain'><Bit>0</Bit></StructEntry></StructReg>",
                   "Node 'Gain': pAddress leads back to itself (Gain > Gain)"},
        HostileRow{"by_a_float_register",
                   "<FloatReg Name='Gain'><Address>0</Address><pLength>Gain</pLength>"
                   "<pPort>Device</pPort></FloatReg>",
                   "Node 'Gain': pLength leads back to itself (Gain > Gain)"},
        HostileRow{"by_a_converter",
                   "<Converter Name='Gain'><pVariable Name='G'>Gain</pVariable><FormulaTo>G</FormulaTo>"
                   "<FormulaFrom>G</FormulaFrom><pValue>One</pValue></Converter>" +
                       integer("One", "<Value>1</Value>"),
                   "Node 'Gain': pVariable leads back to itself (Gain > Gain)"},
        HostileRow{"of_access_modes",
                   integer("Gain", "<pValue>A</pValue>") +
                       "<IntConverter Name='A'><FormulaTo>FROM</FormulaTo>"
                       "<FormulaFrom>TO</FormulaFrom><pValue>Gain</pValue></IntConverter>",
                   "Node 'Gain': pValue leads back to itself (Gain > A > Gain)"}),
    [](const auto &row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Sizes, HostileNode,
    testing::Values(
        HostileRow{"long_chain", chain(5000),
                   "Node 'Gain': more than 100 nodes in a row (Gain > C1 > C2 > C3 > ... > C96 > C97 > C98 > "
                   "C99 > C100)"},
        HostileRow{"work", work(),
                   "Node 'Gain': leads to more than 10000 nodes, or to formulas of as much work"},
        HostileRow{
            "negative_length",
            "<StringReg Name='Gain'><Address>0</Address><Length>-4</Length><pPort>Device</pPort></StringReg>",
            "Node 'Gain': a register of -4 bytes; possible are 1 to 16777216"},
        HostileRow{"fork", fork(),
                   "Node 'Gain': leads to more than 10000 nodes, or to formulas of as much work"},
        HostileRow{"no_length",
                   "<IntReg Name='Gain'><Address>0</Address><Length>0</Length><pPort>Device</pPort></IntReg>",
                   "Node 'Gain': a register of 0 bytes; possible are 1 to 16777216"},
        HostileRow{"absurd_length",
                   "<IntReg "
                   "Name='Gain'><Address>0</Address><Length>0x7FFFFFFFFFFFFFFF</Length><pPort>Device</"
                   "pPort></IntReg>",
                   "Node 'Gain': a register of 9223372036854775807 bytes; possible are 1 to 16777216"},
        HostileRow{"long_integer",
                   "<IntReg Name='Gain'><Address>0</Address><Length>9</Length><pPort>Device</pPort></IntReg>",
                   "Node 'Gain': an integer in a register of 9 bytes; possible are 1 to 8"},
        HostileRow{"address_past_64_bits",
                   "<IntReg "
                   "Name='Gain'><Address>0xFFFFFFFFFFFFFFFF</Address><Length>2</Length><pPort>Device</"
                   "pPort></IntReg>",
                   "Node 'Gain': its address lies outside 64 bits"},
        HostileRow{
            "sum_past_64_bits",
            "<IntReg Name='Gain'><Address>0xFFFFFFFFFFFFFFFF</Address><Address>1</Address><Length>1</Length>"
            "<pPort>Device</pPort></IntReg>",
            "Node 'Gain': its address lies outside 64 bits"},
        HostileRow{
            "negative_address",
            "<IntReg Name='Gain'><pAddress>Low</pAddress><Length>1</Length><pPort>Device</pPort></IntReg>" +
                integer("Low", "<Value>-1</Value>"),
            "Node 'Gain': its address lies outside 64 bits"},
        HostileRow{"index_past_64_bits",
                   "<IntReg Name='Gain'><pIndex Offset='0x4000000000000000'>Eight</pIndex><Length>1</Length>"
                   "<pPort>Device</pPort></IntReg>" +
                       integer("Eight", "<Value>8</Value>"),
                   "Node 'Gain': its address lies outside 64 bits"},
        HostileRow{"bit_outside",
                   "<MaskedIntReg Name='Gain'>" + oneByte +
                       "<LSB>4</LSB><MSB>8</MSB><pPort>Device</pPort></MaskedIntReg>",
                   "Node 'Gain': bits 4 to 8 in a register of 1 bytes"},
        HostileRow{"negative_bit",
                   "<MaskedIntReg Name='Gain'>" + oneByte +
                       "<Bit>-1</Bit><pPort>Device</pPort></MaskedIntReg>",
                   "Node 'Gain': bits -1 to -1 in a register of 1 bytes"}),
    [](const auto &row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Wrong, HostileNode,
    testing::Values(
        HostileRow{"missing_node", integer("Gain", "<pValue>Nothing</pValue>"),
                   "Node 'Gain': pValue names 'Nothing', which the description does not have"},
        HostileRow{"doubled_node", integer("Gain", "<Value>1</Value>") + integer("Gain", "<Value>2</Value>"),
                   "Node 'Gain' is defined more than once"},
        HostileRow{"doubled_reference",
                   integer("Gain", "<pValue>Two</pValue>") + integer("Two", "<Value>1</Value>") +
                       integer("Two", "<Value>2</Value>"),
                   "Node 'Two' is defined more than once"},
        HostileRow{"wrong_kind",
                   integer("Gain", "<pValue>Text</pValue>") + "<String Name='Text'><Value>1</Value></String>",
                   "Node 'Gain': pValue names 'Text', a String, which has no number"},
        HostileRow{"number_in_a_text",
                   "<String Name='Gain'><pValue>One</pValue></String>" + integer("One", "<Value>1</Value>"),
                   "Node 'Gain': pValue names 'One', a Integer, which has no text"},
        HostileRow{"locked_by_a_command",
                   "<Float Name='Gain'><pIsAvailable>Go</pIsAvailable><Value>1</Value></Float>"
                   "<Command Name='Go'><Value>1</Value><CommandValue>1</CommandValue></Command>",
                   "Node 'Gain': pIsAvailable names 'Go', a Command, which has no number"},
        HostileRow{"index_without_a_number",
                   integer("Gain", "<pIndex>Zero</pIndex><ValueIndexed>1</ValueIndexed>") +
                       integer("Zero", "<Value>0</Value>"),
                   "Node 'Gain': ValueIndexed: Index '' is not a 64-bit integer"},
        HostileRow{"no_port", "<IntReg Name='Gain'>" + oneByte + "<pPort>Gain</pPort></IntReg>",
                   "Node 'Gain': pPort names 'Gain', which is no port"},
        HostileRow{"port_left_out", "<IntReg Name='Gain'>" + oneByte + "</IntReg>",
                   "Node 'Gain': a register without pPort"},
        HostileRow{"address_left_out", "<IntReg Name='Gain'><Length>1</Length><pPort>Device</pPort></IntReg>",
                   "Node 'Gain': a register without an address"},
        HostileRow{"length_left_out",
                   "<IntReg Name='Gain'><Address>1</Address><pPort>Device</pPort></IntReg>",
                   "Node 'Gain': a register without a length"},
        HostileRow{"bits_left_out",
                   "<MaskedIntReg Name='Gain'>" + oneByte +
                       "<LSB>1</LSB><pPort>Device</pPort></MaskedIntReg>",
                   "Node 'Gain': a masked register without Bit, or LSB and MSB"},
        HostileRow{"value_left_out", integer("Gain", ""), "Node 'Gain': neither Value nor pValue"},
        HostileRow{"no_number", integer("Gain", "<Value>12z</Value>"),
                   "Node 'Gain': Value: '12z' is not a 64-bit integer"},
        HostileRow{"number_past_64_bits", integer("Gain", "<Value>18446744073709551616</Value>"),
                   "Node 'Gain': Value: '18446744073709551616' is not a 64-bit integer"},
        HostileRow{"unknown_access",
                   reg(oneByte) +
                       integer("Gain", "<Value>1</Value><ImposedAccessMode>XX</ImposedAccessMode>"),
                   "Node 'Gain': ImposedAccessMode: 'XX' is none of RO, WO and RW"},
        HostileRow{"unknown_byte_order",
                   "<IntReg Name='Gain'>" + oneByte +
                       "<Endianess>Middle</Endianess><pPort>Device</pPort></IntReg>",
                   "Node 'Gain': Endianess: 'Middle' is neither BigEndian nor LittleEndian"},
        HostileRow{"unknown_caching",
                   "<IntReg Name='Gain'>" + oneByte +
                       "<Cachable>Often</Cachable><pPort>Device</pPort></IntReg>",
                   "Node 'Gain': Cachable: 'Often' is none of NoCache, WriteThrough and WriteAround"},
        HostileRow{"control_characters", integer("Gain", "<pValue>&#27;[2J</pValue>"),
                   "Node 'Gain': pValue names '?[2J', which the description does not have"}),
    [](const auto &row) { return row.param.name; });

TEST(Hostile, ChainsOfARealCamerasLengthAreNotRefused)
{
    Camera camera{chain(90)};
    EXPECT_EQ(camera.value("Gain"), 5);
}

TEST(Hostile, CirclesOfWritesEndBeforeTheDevice)
{
    Camera camera{integer("Gain", "<pValue>Reg</pValue><pValueCopy>Gain</pValueCopy>") +
                  "<IntReg Name='Reg'>" + at(0, 1, "<AccessMode>RW</AccessMode>") + "</IntReg>"};
    EXPECT_EQ(refusal([&] { camera.integer("Gain")->SetValue(1); }),
              "Node 'Gain': pValueCopy leads back to itself (Gain > Gain)");
}

TEST(Hostile, TextsAreCutToTheirBuffer)
{
    const std::string name(400, 'n');
    Camera camera{integer("Gain", "<pValue>" + name + "</pValue>")};
    const std::string text = refusal([&] { camera.value("Gain"); });
    EXPECT_EQ(text, "Node 'Gain': pValue names '" + std::string(228, 'n'));
    EXPECT_EQ(text.size(), 255U);
}

} // namespace
