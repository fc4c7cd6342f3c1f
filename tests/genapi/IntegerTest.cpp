// SPDX-License-Identifier: MIT
// Integer nodes over registers: byte orders, signs, bit fields in both numberings, ranges, and what a write
// leaves on the device.
#include "Camera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();

/// Reads the value, then fills the register with the opposite bits and writes the value back.
TEST(Integer, ReadsAndWritesTheSameBitsOfARegister)
{
    struct Row
    {
        std::vector<std::uint8_t> bytes;
        std::string children;
        std::int64_t value, min, max;
    };
    const std::vector<std::uint8_t> ones(8, 0xff);
    const Row rows[] = {{{0xfe}, "", 254, 0, 255},
                        {{0xfe}, "<Sign>Signed</Sign>", -2, -128, 127},
                        {{1, 2, 3, 0x84}, "", 0x84030201, 0, 0xffffffff},
                        {{0x84, 3, 2, 1}, bigEndian, 0x84030201, 0, 0xffffffff},
                        {{0, 0, 0x80}, "<Sign>Signed</Sign>", -8388608, -8388608, 8388607},
                        {ones, "", -1, 0, highest},
                        {{0, 0, 0, 0, 0, 0, 0, 0x80}, "<Sign>Signed</Sign>", lowest, lowest, highest},
                        {{0xc5, 0x3a}, "<LSB>4</LSB><MSB>11</MSB>", 0xac, 0, 255},
                        {{0xc5, 0x3a}, "<LSB>11</LSB><MSB>4</MSB>", 0xac, 0, 255},
                        {{0x12, 0x34, 0x56, 0x78}, "<LSB>31</LSB><MSB>28</MSB>" + bigEndian, 8, 0, 15},
                        {{0x12, 0x34, 0x56, 0x78}, "<LSB>15</LSB><MSB>4</MSB>" + bigEndian, 0x234, 0, 4095},
                        {{0x80, 0}, "<Bit>0</Bit>" + bigEndian, 1, 0, 1},
                        {{1, 0x80}, "<Bit>0</Bit>", 1, 0, 1},
                        {{0xf0}, "<LSB>4</LSB><MSB>7</MSB><Sign>Signed</Sign>", -1, -8, 7},
                        {{0x10}, "<Bit>4</Bit><Sign>Signed</Sign>", -1, -1, 0},
                        {ones, "<LSB>0</LSB><MSB>63</MSB>", -1, 0, highest}};
    for (const auto &[bytes, children, value, min, max] : rows) {
        SCOPED_TRACE(children);
        const bool isField = children.starts_with("<LSB>") || children.starts_with("<Bit>");
        Camera camera{element(isField ? "MaskedIntReg" : "IntReg", "X",
                              at(0x100, static_cast<int>(bytes.size()), readWrite + children))};
        camera.port.set(0x100, bytes);
        EXPECT_EQ(camera.value("X"), value);
        EXPECT_EQ(camera.integer("X")->GetMin(), min);
        EXPECT_EQ(camera.integer("X")->GetMax(), max);
        camera.integer("X")->SetValue(0, true);
        EXPECT_EQ(camera.value("X"), 0);
        camera.integer("X")->SetValue(value, false);
        EXPECT_EQ(camera.port.get(0x100, bytes.size()), bytes);
    }
}

TEST(Integer, LiteralsAreDecimalOrHexadecimal)
{
    Camera camera{constant("Zero", "010") + constant("All", "0xFFFFFFFFFFFFFFFF")};
    EXPECT_EQ(camera.value("Zero"), 10);
    EXPECT_EQ(camera.value("All"), -1);
}

TEST(Integer, WritesPastTheRegisterAreRefusedAndReachNoDevice)
{
    Camera camera{
        element("IntReg", "Byte", at(0, 1, readWrite)) +
        element("MaskedIntReg", "Bits", at(4, 1, readWrite + "<LSB>1</LSB><MSB>2</MSB><Sign>Signed</Sign>"))};
    EXPECT_EQ(refusal([&] { camera.integer("Byte")->SetValue(256, false); }),
              "Node 'Byte': 256 does not fit into its 8 bits, which take 0 to 255");
    EXPECT_EQ(refusal([&] { camera.integer("Byte")->SetValue(-1, true); }),
              "Node 'Byte': -1 lies outside its limits, at present 0 to 255");
    EXPECT_EQ(refusal([&] { camera.integer("Bits")->SetValue(2, false); }),
              "Node 'Bits': 2 does not fit into its 2 bits, which take -2 to 1");
    EXPECT_THAT(camera.port.accesses, ElementsAre());
}

TEST(Integer, AFieldKeepsTheBitsAroundItAsTheDeviceHasThemNow)
{
    Camera camera{element("MaskedIntReg", "Field", at(0, 2, readWrite + "<LSB>4</LSB><MSB>7</MSB>")) +
                  element("MaskedIntReg", "Pulse", at(4, 1, "<AccessMode>WO</AccessMode><Bit>3</Bit>"))};
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
        element("Integer", "Width", "<pValue>Reg</pValue><Min>16</Min><pMax>Sensor</pMax><Inc>8</Inc>") +
        element("Integer", "Outer", "<pValue>Width</pValue>") + constant("Sensor", "640") +
        element("Integer", "Odd", "<Value>3</Value><Min>3</Min><Inc>4</Inc>") +
        element("Integer", "Still", "<Value>5</Value><Inc>0</Inc>") +
        element("IntReg", "Reg", at(0, 2, readWrite))};
    EXPECT_EQ(camera.integer("Outer")->GetMin(), 16);
    EXPECT_EQ(camera.integer("Outer")->GetMax(), 640);
    EXPECT_EQ(camera.integer("Outer")->GetInc(), 8);
    EXPECT_EQ(camera.integer("Sensor")->GetMin(), lowest);

    Camera between{"<SwissKnife Name='Low'><Formula>1.5</Formula></SwissKnife>"
                   "<SwissKnife Name='Endless'><Formula>1/0</Formula></SwissKnife>" +
                   element("Integer", "Gain", "<Value>2</Value><pMin>Low</pMin><pMax>Endless</pMax>")};
    EXPECT_EQ(between.integer("Gain")->GetMin(), 2) << "the first integer inside";
    EXPECT_EQ(between.integer("Gain")->GetMax(), highest);

    camera.integer("Width")->SetValue(640);
    EXPECT_EQ(refusal([&] { camera.integer("Width")->SetValue(648); }),
              "Node 'Width': 648 lies outside its limits, at present 16 to 640");
    EXPECT_EQ(refusal([&] { camera.integer("Width")->SetValue(20); }),
              "Node 'Width': 20 is not 16 plus a multiple of 8");
    EXPECT_EQ(refusal([&] { camera.integer("Still")->SetValue(5); }), "Node 'Still': its increment is 0");
    camera.integer("Odd")->SetValue(7);
    EXPECT_EQ(refusal([&] { camera.integer("Odd")->SetValue(8); }),
              "Node 'Odd': 8 is not 3 plus a multiple of 4");
    camera.integer("Width")->SetValue(8, false);
    EXPECT_EQ(refusal([&] { camera.integer("Width")->GetValue(true); }),
              "Node 'Width': 8 lies outside its limits, at present 16 to 640");
    EXPECT_EQ(camera.value("Width"), 8);
}

TEST(Integer, CopiesAreWrittenAlongInOrderAndOwnValuesStayInTheirNodeMap)
{
    const std::string nodes =
        element("Integer", "Gain", "<pValue>A</pValue><pValueCopy>B</pValueCopy><pValueCopy>C</pValueCopy>") +
        element("IntReg", "A", at(0, 1, readWrite)) + element("IntReg", "B", at(1, 1, readWrite)) +
        element("IntReg", "C", at(2, 1, readWrite)) + constant("Own", "0x10");
    Camera camera{nodes};
    Camera other{nodes};
    camera.integer("Gain")->SetValue(7);
    EXPECT_THAT(camera.port.accesses, ElementsAre("W 0 1", "W 1 1", "W 2 1"));
    EXPECT_THAT(camera.port.get(0, 3), ElementsAre(7, 7, 7));

    Camera half{element("Integer", "Gain", "<pValue>A</pValue><pValueCopy>B</pValueCopy>") +
                element("IntReg", "A", at(0, 1, readWrite)) + element("IntReg", "B", at(1, 1))};
    EXPECT_EQ(refusal([&] { half.integer("Gain")->SetValue(7); }),
              "Node 'Gain': pValueCopy names 'B', which can't be written");
    EXPECT_THAT(half.port.accesses, IsEmpty()) << "all or none";

    camera.integer("Own")->SetValue(17);
    EXPECT_EQ(camera.value("Own"), 17);
    EXPECT_EQ(other.value("Own"), 16) << "the description is shared, its values are not";
}

TEST(Integer, ConvertersRunOneFormulaForReadsAndOneForWrites)
{
    const std::string formulas = "<pVariable Name='K'>Factor</pVariable><FormulaTo>FROM / K</FormulaTo>"
                                 "<FormulaFrom>TO * K</FormulaFrom><pValue>R</pValue>";
    Camera camera{constant("Factor", "4") + element("IntReg", "R", at(0, 1, readWrite)) +
                  element("IntConverter", "Up", formulas + "<Slope>Increasing</Slope>") +
                  element("IntConverter", "Open", formulas) +
                  element("IntConverter", "Wide",
                          "<FormulaTo>FROM / 2</FormulaTo><FormulaFrom>TO * 2</FormulaFrom>"
                          "<pValue>Factor</pValue><Slope>Increasing</Slope>") +
                  element("IntConverter", "Down",
                          "<FormulaTo>100 - FROM</FormulaTo><FormulaFrom>100 - TO</FormulaFrom>"
                          "<pValue>R</pValue><Slope>Decreasing</Slope>")};
    camera.integer("Up")->SetValue(39);
    EXPECT_THAT(camera.port.get(0, 1), ElementsAre(9)) << "by the division of integers";
    EXPECT_EQ(camera.value("Up"), 36);
    EXPECT_EQ(camera.integer("Up")->GetMax(), 1020);
    EXPECT_EQ(camera.integer("Open")->GetMax(), 1020) << "as the converted ends show";
    EXPECT_EQ(camera.integer("Wide")->GetMax(), highest) << "where the formula would wrap";
    EXPECT_EQ(camera.integer("Down")->GetMin(), -155);
    EXPECT_EQ(camera.integer("Down")->GetMax(), 100);
}

} // namespace
