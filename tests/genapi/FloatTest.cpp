// SPDX-License-Identifier: MIT
// Float nodes: registers of both lengths and byte orders, formulas, ranges, and the meeting of floats and integers.
#include "Camera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using testing::ElementsAre;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();

std::string floatOf(const std::string &name, const std::string &children)
{
    return element("Float", name, children);
}

std::string floatReg(const std::string &name, std::uint64_t address, int length, const std::string &more = "")
{
    return element("FloatReg", name, at(address, length, readWrite + more));
}

TEST(FloatReg, ReadsAndWritesIeee754InBothByteOrders)
{
    Camera camera{floatReg("Little4", 0, 4) + floatReg("Big4", 4, 4, bigEndian) + floatReg("Little8", 8, 8) +
                  floatReg("Big8", 16, 8, bigEndian) + floatReg("Long", 0, 6)};
    camera.port.set(0, {0x00, 0x00, 0xc0, 0xbf, 0xbf, 0xc0, 0x00, 0x00});
    camera.port.set(8, {0x9a, 0x99, 0x99, 0x99, 0x99, 0x99, 0xb9, 0x3f});
    camera.port.set(16, {0x3f, 0xb9, 0x99, 0x99, 0x99, 0x99, 0x99, 0x9a});
    EXPECT_EQ(camera.real("Little4")->GetValue(), -1.5);
    EXPECT_EQ(camera.real("Big4")->GetValue(), -1.5);
    EXPECT_EQ(camera.real("Little8")->GetValue(), 0.1);
    EXPECT_EQ(camera.real("Big8")->GetValue(), 0.1);
    for (const char *const name : {"Little4", "Big4", "Little8", "Big8"})
        camera.real(name)->SetValue(2);
    EXPECT_THAT(camera.port.get(0, 8), ElementsAre(0, 0, 0, 0x40, 0x40, 0, 0, 0));
    EXPECT_THAT(camera.port.get(8, 16), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0x40, 0x40, 0, 0, 0, 0, 0, 0, 0));

    EXPECT_EQ(camera.real("Little4")->GetMax(), 0x1.fffffep127);
    EXPECT_EQ(camera.real("Little8")->GetMin(), -largest);
    EXPECT_EQ(refusal([&] { camera.real("Little4")->SetValue(1e39, false); }),
              "Node 'Little4': 1e+39 does not fit into its 4 bytes, which take -3.4028234663852886e+38 to "
              "3.4028234663852886e+38");
    EXPECT_EQ(refusal([&] { camera.real("Little8")->SetValue(std::nan("")); }),
              "Node 'Little8': nan lies outside its limits, at present -1.7976931348623157e+308 to "
              "1.7976931348623157e+308");
    camera.real("Little4")->SetValue(infinity, false);
    EXPECT_EQ(camera.real("Little4")->GetValue(), infinity);
    EXPECT_EQ(refusal([&] { camera.real("Little4")->GetValue(true); }),
              "Node 'Little4': inf lies outside its limits, at present -3.4028234663852886e+38 to "
              "3.4028234663852886e+38");
    EXPECT_EQ(refusal([&] { camera.real("Long")->GetValue(); }),
              "Node 'Long': a float in a register of 6 bytes; possible are 4 and 8");
}

TEST(Float, RangeAndStepComeFromItselfFirstAndThenFromWhatItRefersTo)
{
    Camera camera{floatOf("Exposure", "<pValue>Raw</pValue><Min>1e1</Min><pMax>Most</pMax><Inc>0.5</Inc>") +
                  floatOf("Plain", "<pValue>Raw</pValue>") + floatOf("Outer", "<pValue>Exposure</pValue>") +
                  floatOf("Most", "<Value>99.5</Value>") + floatReg("Raw", 0, 4)};
    EXPECT_EQ(camera.real("Outer")->GetMin(), 10);
    EXPECT_EQ(camera.real("Outer")->GetMax(), 99.5);
    EXPECT_TRUE(camera.real("Outer")->HasInc());
    EXPECT_EQ(camera.real("Outer")->GetInc(), 0.5);
    EXPECT_EQ(camera.real("Plain")->GetMax(), 0x1.fffffep127);
    EXPECT_FALSE(camera.real("Plain")->HasInc());
    EXPECT_EQ(refusal([&] { camera.real("Plain")->GetInc(); }), "Node 'Plain': it has no increment");
    camera.real("Outer")->SetValue(20.25);
    EXPECT_EQ(camera.real("Raw")->GetValue(), 20.25) << "steps are not checked";
    EXPECT_EQ(refusal([&] { camera.real("Exposure")->SetValue(9.75); }),
              "Node 'Exposure': 9.75 lies outside its limits, at present 10 to 99.5");
    camera.real("Exposure")->SetValue(5, false);
    EXPECT_EQ(camera.real("Plain")->GetValue(), 5);
    EXPECT_EQ(camera.real("Most")->GetMin(), -largest);
}

TEST(Float, NumbersAreReadAsDescriptionsWriteThem)
{
    const auto value = [](const std::string &text) {
        return Camera{floatOf("X", "<Value>" + text + "</Value>")}.real("X")->GetValue();
    };
    const std::string zeros(400, '0');
    const std::pair<std::string, double> rows[] = {
        {" -1.25e-2 ", -0.0125},
        {"+.5", 0.5},
        {"5.", 5},
        {"0x10", 16},
        {"18446744073709551615", 0x1p64},
        {"-INF", -infinity},
        {"1.79769313486232E+308", infinity}, // the largest double, rounded up to 15 digits
        {"-" + std::string(400, '9'), -infinity},
        {"1e-999", 0},
        {"0." + zeros + "1", 0},
        {"0." + zeros + "1e+5", 0},
        {"1" + zeros + "e-5", infinity},
        {"0." + zeros + "1e99999999999999999999", infinity},
        {"9." + zeros + "1E-9223372036854775807", 0}};
    for (const auto &[text, number] : rows)
        EXPECT_EQ(value(text), number) << text;
    EXPECT_TRUE(std::isnan(value("NaN")));
    for (const char *const text : {"", "1,5", "1e", "--1", "+-1", "1.5f", "0x1.8", "one"})
        EXPECT_EQ(refusal([&] { value(text); }),
                  "Node 'X': Value: '" + std::string{text} + "' is not a number");
}

TEST(Float, MeetsIntegersInBothDirections)
{
    Camera camera{floatOf("Half", "<Value>-2.5</Value>") + floatOf("Huge", "<Value>1e30</Value>") +
                  element("Integer", "Cut", "<pValue>Half</pValue>") +
                  element("Integer", "Lost", "<pValue>Huge</pValue>") +
                  element("Integer", "Ends", "<pValue>Narrow</pValue>") +
                  floatOf("Narrow", "<Value>1</Value><Min>0.5</Min><Max>2.5</Max>") +
                  floatOf("Whole", "<pValue>Byte</pValue>") + element("IntReg", "Byte", at(0, 1, readWrite))};
    EXPECT_EQ(camera.value("Cut"), -2);
    EXPECT_EQ(camera.integer("Cut")->GetMin(), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(camera.integer("Ends")->GetMin(), 1);
    EXPECT_EQ(camera.integer("Ends")->GetMax(), 2);
    EXPECT_EQ(refusal([&] { camera.value("Lost"); }),
              "Node 'Lost': pValue gives 1e+30, which is no 64-bit integer");
    camera.real("Whole")->SetValue(6.5);
    EXPECT_EQ(camera.real("Whole")->GetValue(), 7) << "to the nearest";
    EXPECT_EQ(camera.real("Whole")->GetMax(), 255);
    EXPECT_EQ(camera.real("Whole")->GetInc(), 1) << "of the integer behind it";
    EXPECT_EQ(refusal([&] { camera.real("Whole")->SetValue(1e30, false); }),
              "Node 'Whole': node 'Byte': 1e+30 lies outside what 64 bits hold, -9223372036854775808 to "
              "9223372036854775807 (Whole > Byte)");
    camera.integer("Cut")->SetValue(4);
    EXPECT_EQ(camera.real("Half")->GetValue(), 4);
}

TEST(Float, ConvertersKeepTheRangeOfTheirSlope)
{
    const auto converter = [](const std::string &name, const std::string &to, const std::string &from,
                              const std::string &more) {
        return element("Converter", name,
                       "<pVariable Name='K'>Scale</pVariable><FormulaTo>" + to + "</FormulaTo><FormulaFrom>" +
                           from + "</FormulaFrom><pValue>Raw</pValue>" + more);
    };
    Camera camera{floatOf("Scale", "<Value>0.1</Value>") + element("IntReg", "Raw", at(0, 1, readWrite)) +
                  converter("Open", "FROM / K", "TO * K", "") +
                  converter("Down", "100 - FROM", "100 - TO", "<Slope>Automatic</Slope>") +
                  converter("Rate", "1000 / FROM", "1000 / TO", "<Slope>Decreasing</Slope>") +
                  converter("Wave", "FROM", "SIN(TO)", "<Slope>Varying</Slope>") +
                  converter("Root", "FROM", "SQRT(10 - TO)", "<Slope>Decreasing</Slope>") +
                  converter("Wrong", "-FROM", "-TO", "<Slope>Increasing</Slope>") +
                  converter("Odd", "FROM", "TO", "<Slope>Up</Slope>")};
    camera.real("Open")->SetValue(12.3);
    EXPECT_THAT(camera.port.get(0, 1), ElementsAre(123)) << "not 122, which 12.3 / 0.1 cut would give";
    EXPECT_DOUBLE_EQ(camera.real("Open")->GetValue(), 12.3);
    const auto range = [&](const char *name) {
        return std::pair{camera.real(name)->GetMin(), camera.real(name)->GetMax()};
    };
    EXPECT_EQ(range("Open"), (std::pair{0.0, 25.5}));
    EXPECT_EQ(range("Down"), (std::pair{-155.0, 100.0}));
    EXPECT_EQ(range("Rate"), (std::pair{1000.0 / 255, infinity}));
    EXPECT_EQ(range("Wrong"), (std::pair{-255.0, 0.0})) << "or no write would succeed";
    EXPECT_EQ(range("Wave"), (std::pair{-largest, largest}));
    EXPECT_EQ(range("Root"), (std::pair{-largest, std::sqrt(10.0)})) << "no number at the inner end";
    EXPECT_EQ(refusal([&] { camera.real("Odd")->GetValue(); }),
              "Node 'Odd': Slope: 'Up' is none of Increasing, Decreasing, Varying and Automatic");
}

} // namespace
