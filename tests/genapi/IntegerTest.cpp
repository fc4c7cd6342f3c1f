// SPDX-License-Identifier: MIT
// Integer nodes over registers: byte orders, signs, bit fields in both numberings, ranges, and what a write
// leaves on the device.
#include "Camera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>

using testing::ElementsAre;

namespace {

constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();

struct RegisterRow
{
    const char *name;
    const char *kind;
    std::vector<std::uint8_t> bytes;
    const char *children;
    std::int64_t value;
    std::int64_t min;
    std::int64_t max;
};

void PrintTo(const RegisterRow &row, std::ostream *out)
{
    *out << row.name;
}

class RegisterValue : public testing::TestWithParam<RegisterRow>
{};

/// Reads the row's value, then fills the register with the opposite bits and writes the value back.
TEST_P(RegisterValue, ReadsAndWritesTheSameBits)
{
    const RegisterRow &row = GetParam();
    const std::string kind = row.kind;
    Camera camera{"<" + kind + " Name='X'>" +
                  at(0x100, static_cast<int>(row.bytes.size()), std::string{readWrite} + row.children) +
                  "</" + kind + ">"};
    camera.port.set(0x100, row.bytes);
    EXPECT_EQ(camera.value("X"), row.value);
    EXPECT_EQ(camera.integer("X")->GetMin(), row.min);
    EXPECT_EQ(camera.integer("X")->GetMax(), row.max);

    camera.integer("X")->SetValue(0, true);
    EXPECT_EQ(camera.value("X"), 0);
    camera.integer("X")->SetValue(row.value, false);
    EXPECT_EQ(camera.port.get(0x100, row.bytes.size()), row.bytes);
}

constexpr const char *big = "<Endianess>BigEndian</Endianess>";

INSTANTIATE_TEST_SUITE_P(
    Rows, RegisterValue,
    testing::Values(
        RegisterRow{"one_byte", "IntReg", {0xfe}, "", 254, 0, 255},
        RegisterRow{"one_byte_signed", "IntReg", {0xfe}, "<Sign>Signed</Sign>", -2, -128, 127},
        RegisterRow{"little_endian", "IntReg", {0x01, 0x02, 0x03, 0x84}, "", 0x84030201, 0, 0xffffffff},
        RegisterRow{"big_endian", "IntReg", {0x84, 0x03, 0x02, 0x01}, big, 0x84030201, 0, 0xffffffff},
        RegisterRow{
            "three_bytes_signed", "IntReg", {0, 0, 0x80}, "<Sign>Signed</Sign>", -8388608, -8388608, 8388607},
        RegisterRow{"eight_bytes_unsigned_top_bit",
                    "IntReg",
                    {0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff},
                    "",
                    -1,
                    0,
                    highest},
        RegisterRow{"eight_bytes_signed",
                    "IntReg",
                    {0, 0, 0, 0, 0, 0, 0, 0x80},
                    "<Sign>Signed</Sign>",
                    lowest,
                    lowest,
                    highest},
        RegisterRow{
            "little_endian_field", "MaskedIntReg", {0xc5, 0x3a}, "<LSB>4</LSB><MSB>11</MSB>", 0xac, 0, 255},
        RegisterRow{"little_endian_field_other_order",
                    "MaskedIntReg",
                    {0xc5, 0x3a},
                    "<LSB>11</LSB><MSB>4</MSB>",
                    0xac,
                    0,
                    255},
        RegisterRow{"big_endian_field_counts_from_the_top",
                    "MaskedIntReg",
                    {0x12, 0x34, 0x56, 0x78},
                    "<LSB>31</LSB><MSB>28</MSB><Endianess>BigEndian</Endianess>",
                    8,
                    0,
                    15},
        RegisterRow{"big_endian_field_in_the_middle",
                    "MaskedIntReg",
                    {0x12, 0x34, 0x56, 0x78},
                    "<LSB>15</LSB><MSB>4</MSB><Endianess>BigEndian</Endianess>",
                    0x234,
                    0,
                    4095},
        RegisterRow{"big_endian_bit_0_is_the_top_bit",
                    "MaskedIntReg",
                    {0x80, 0x00},
                    "<Bit>0</Bit><Endianess>BigEndian</Endianess>",
                    1,
                    0,
                    1},
        RegisterRow{
            "little_endian_bit_0_is_the_lowest", "MaskedIntReg", {0x01, 0x80}, "<Bit>0</Bit>", 1, 0, 1},
        RegisterRow{
            "signed_field", "MaskedIntReg", {0xf0}, "<LSB>4</LSB><MSB>7</MSB><Sign>Signed</Sign>", -1, -8, 7},
        RegisterRow{"signed_bit", "MaskedIntReg", {0x10}, "<Bit>4</Bit><Sign>Signed</Sign>", -1, -1, 0},
        RegisterRow{"field_of_64_bits",
                    "MaskedIntReg",
                    {1, 2, 3, 4, 5, 6, 7, 0x88},
                    "<LSB>0</LSB><MSB>63</MSB>",
                    static_cast<std::int64_t>(0x8807060504030201),
                    0,
                    highest}),
    [](const auto &row) { return row.param.name; });

TEST(Integer, WritesPastTheRegisterAreRefusedAndReachNoDevice)
{
    Camera camera{"<IntReg Name='Byte'>" + at(0, 1, readWrite) + "</IntReg><MaskedIntReg Name='Bits'>" +
                  at(4, 1, "<AccessMode>RW</AccessMode><LSB>1</LSB><MSB>2</MSB><Sign>Signed</Sign>") +
                  "</MaskedIntReg>"};
    EXPECT_EQ(refusal([&] { camera.integer("Byte")->SetValue(256, false); }),
              "Node 'Byte': 256 does not fit into 8 bits");
    EXPECT_EQ(refusal([&] { camera.integer("Byte")->SetValue(-1, true); }),
              "Node 'Byte': -1 lies outside 0 to 255");
    EXPECT_EQ(refusal([&] { camera.integer("Bits")->SetValue(2, false); }),
              "Node 'Bits': 2 does not fit into 2 bits");
    EXPECT_THAT(camera.port.accesses, ElementsAre());
}

TEST(Integer, AFieldKeepsTheBitsAroundItAsTheDeviceHasThemNow)
{
    Camera camera{"<MaskedIntReg Name='Field'>" +
                  at(0, 2, "<AccessMode>RW</AccessMode><LSB>4</LSB><MSB>7</MSB>") +
                  "</MaskedIntReg><MaskedIntReg Name='Pulse'>" +
                  at(4, 1, "<AccessMode>WO</AccessMode><Bit>3</Bit>") + "</MaskedIntReg>"};
    camera.port.set(0, {0x00, 0x00});
    EXPECT_EQ(camera.value("Field"), 0);
    camera.port.set(0, {0x0f, 0xff});
    camera.integer("Field")->SetValue(0xa);
    EXPECT_THAT(camera.port.get(0, 2), ElementsAre(0xaf, 0xff));

    camera.port.accesses.clear();
    camera.port.set(4, {0xff});
    camera.integer("Pulse")->SetValue(1);
    EXPECT_THAT(camera.port.accesses, ElementsAre("W 4 1")) << "what can't be read is not read";
    EXPECT_THAT(camera.port.get(4, 1), ElementsAre(0x08));
}

TEST(Integer, RangeAndStepComeFromItselfFirstAndThenFromWhatItRefersTo)
{
    Camera camera{
        "<Integer "
        "Name='Width'><pValue>WidthReg</pValue><Min>16</Min><pMax>Sensor</pMax><Inc>8</Inc></Integer>"
        "<Integer Name='Plain'><pValue>WidthReg</pValue></Integer>"
        "<Integer Name='Outer'><pValue>Width</pValue></Integer>"
        "<Integer Name='Sensor'><Value>640</Value></Integer>"
        "<Integer Name='Odd'><Value>3</Value><Min>3</Min><Inc>4</Inc></Integer>"
        "<Integer Name='Still'><Value>5</Value><Inc>0</Inc></Integer>"
        "<IntReg Name='WidthReg'>" +
        at(0, 2, readWrite) + "</IntReg>"};
    EXPECT_EQ(camera.integer("Outer")->GetMin(), 16);
    EXPECT_EQ(camera.integer("Outer")->GetMax(), 640);
    EXPECT_EQ(camera.integer("Outer")->GetInc(), 8);
    EXPECT_EQ(camera.integer("Plain")->GetMax(), 65535);
    EXPECT_EQ(camera.integer("Sensor")->GetMin(), lowest);

    camera.integer("Width")->SetValue(640);
    EXPECT_EQ(refusal([&] { camera.integer("Width")->SetValue(648); }),
              "Node 'Width': 648 lies outside 16 to 640");
    EXPECT_EQ(refusal([&] { camera.integer("Width")->SetValue(20); }),
              "Node 'Width': 20 is not 16 plus a multiple of 8");
    EXPECT_EQ(refusal([&] { camera.integer("Still")->SetValue(5); }), "Node 'Still': its increment is 0");
    camera.integer("Odd")->SetValue(7);
    EXPECT_EQ(refusal([&] { camera.integer("Odd")->SetValue(8); }),
              "Node 'Odd': 8 is not 3 plus a multiple of 4");
    camera.integer("Width")->SetValue(8, false);
    EXPECT_EQ(camera.value("Width"), 8);
    EXPECT_EQ(refusal([&] { camera.integer("Width")->GetValue(true); }),
              "Node 'Width': 8 lies outside 16 to 640");
}

TEST(Integer, CopiesAreWrittenAlongInOrderAndOwnValuesStayInTheirNodeMap)
{
    const std::string nodes =
        "<Integer Name='Gain'><pValue>A</pValue><pValueCopy>B</pValueCopy>"
        "<pValueCopy>C</pValueCopy></Integer><Integer Name='Own'><Value>0x10</Value></Integer>"
        "<IntReg Name='A'>" +
        at(0, 1, readWrite) +
        "</IntReg>"
        "<IntReg Name='B'>" +
        at(1, 1, readWrite) +
        "</IntReg>"
        "<IntReg Name='C'>" +
        at(2, 1, readWrite) + "</IntReg>";
    Camera camera{nodes};
    Camera other{nodes};
    camera.integer("Gain")->SetValue(7);
    EXPECT_THAT(camera.port.accesses, ElementsAre("W 0 1", "W 1 1", "W 2 1"));
    EXPECT_THAT(camera.port.get(0, 3), ElementsAre(7, 7, 7));

    camera.integer("Own")->SetValue(17);
    EXPECT_EQ(camera.value("Own"), 17);
    EXPECT_EQ(other.value("Own"), 16) << "the description is shared, its values are not";
}

TEST(Integer, ConvertersRunOneFormulaForReadsAndOneForWrites)
{
    const std::string reg = "<IntReg Name='R'>" + at(0, 1, readWrite) + "</IntReg>";
    const std::string formulas = "<pVariable Name='K'>Factor</pVariable><FormulaTo>FROM / K</FormulaTo>"
                                 "<FormulaFrom>TO * K</FormulaFrom><pValue>R</pValue>";
    Camera camera{
        "<Integer Name='Factor'><Value>4</Value></Integer>" + reg + "<IntConverter Name='Up'>" + formulas +
        "<Slope>Increasing</Slope></IntConverter><IntConverter Name='Open'>" + formulas +
        "</IntConverter><IntConverter Name='Down'><FormulaTo>100 - FROM</FormulaTo>"
        "<FormulaFrom>100 - TO</FormulaFrom><pValue>R</pValue><Slope>Decreasing</Slope></IntConverter>"};
    camera.integer("Up")->SetValue(36);
    EXPECT_THAT(camera.port.get(0, 1), ElementsAre(9));
    EXPECT_EQ(camera.value("Up"), 36);
    EXPECT_EQ(camera.integer("Up")->GetMax(), 1020);
    EXPECT_EQ(camera.integer("Open")->GetMax(), 1020) << "as the converted ends show";
    EXPECT_EQ(camera.integer("Down")->GetMin(), -155);
    EXPECT_EQ(camera.integer("Down")->GetMax(), 100);
}

} // namespace
