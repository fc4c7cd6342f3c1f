// SPDX-License-Identifier: MIT
// Formulas, asked through a node as descriptions use them: expression, variables and result, by the rules of
// integers and by those of floats, and for the faulty ones the whole text.
#include "Camera.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();

std::string escaped(const std::string &formula)
{
    std::string text;
    for (const char byte : formula)
        text += byte == '&' ? "&amp;" : byte == '<' ? "&lt;" : std::string(1, byte);
    return text;
}

/// The node "F" with \p formula, and the variables A = 7, B = -3, Z = 0 and R, an integer of range 2 to 10,
/// step 4.
std::string knife(const std::string &formula, const std::string &more = "")
{
    return constant("IntA", "7") + constant("IntB", "-3") + constant("IntZ", "0") +
           "<Integer Name='IntR'><Value>6</Value><Min>2</Min><Max>10</Max><Inc>4</Inc></Integer>"
           "<IntSwissKnife Name='F'><pVariable Name='A'>IntA</pVariable><pVariable Name='B'>IntB</pVariable>"
           "<pVariable Name='Z'>IntZ</pVariable><pVariable Name='R'>IntR</pVariable>"
           "<pVariable Name='Declared.Max'>IntR</pVariable>" +
           more + "<Formula>" + escaped(formula) + "</Formula></IntSwissKnife>";
}

using Row = std::pair<const char *, std::int64_t>;

void expectIntegers(std::initializer_list<Row> rows)
{
    for (const auto &[formula, result] : rows)
        EXPECT_EQ(Camera{knife(formula)}.value("F"), result) << formula;
}

TEST(IntegerFormula, ReadsNumbersAndNames)
{
    expectIntegers({Row{" 12 ", 12}, Row{"0xfF", 255}, Row{"0xFFFFFFFFFFFFFFFF", -1}, Row{"1.5e1 + 2.0", 17},
                    Row{"A * B", -21}, Row{"A.Value", 7}, Row{"R.Min * 100 + R.Max * 10 + R.Inc", 304},
                    Row{"Declared.Max", 10}});
}

TEST(IntegerFormula, KeepsThePrecedences)
{
    expectIntegers({Row{"1 + 2 * 3", 7}, Row{"1 << 2 + 1", 8}, Row{"1 << 2 < 5", 1}, Row{"2 > 1 = 0", 0},
                    Row{"6 & 2 = 2", 0}, Row{"1 ^ 3 & 2", 3}, Row{"4 | 1 ^ 5", 4}, Row{"0 && 1 | 1", 0},
                    Row{"1 || 0 && 0", 1}, Row{"0 || 1 ? 5 : 6", 5}, Row{"100 - 10 - 1", 89},
                    Row{"100 / 10 / 5", 2}, Row{"(1 + 2) * 3", 9}, Row{"0 ? 1 : 0 ? 2 : 3", 3},
                    Row{"1 ? 0 ? 1 : 2 : 3", 2}, Row{"2 ** 3 ** 2", 512}, Row{"-2 ** 2", -4},
                    Row{"(-2) ** 2", 4}});
}

TEST(IntegerFormula, ComputesWithin64Bits)
{
    expectIntegers({Row{"1 << 63", lowest}, Row{"0x7FFFFFFFFFFFFFFF + 1", lowest},
                    Row{"(1 << 63) - 1", highest}, Row{"0x4000000000000000 * 4", 0},
                    Row{"(1 << 63) / -1", lowest}, Row{"(1 << 63) % -1", 0}, Row{"ABS(1 << 63)", lowest},
                    Row{"3 ** 41 = 0xFA2A1CF67B5FB863", 1}});
}

TEST(IntegerFormula, HasOperatorsAndFunctions)
{
    expectIntegers({Row{"2 ** -1", 0}, Row{"(-1) ** -3", -1}, Row{"- - + 5", 5}, Row{"~0", -1},
                    Row{"!A + !Z", 1}, Row{"B / 2", -1}, Row{"B % 2", -1}, Row{"B >> 1", -2},
                    Row{"Z ? 1 / Z : 4", 4}, Row{"Z && 1 / Z", 0}, Row{"A || 1 / Z", 1},
                    Row{"(5 || 0) + (3 && 4)", 2}});
    expectIntegers({Row{"(1 == 1) + (1 != 2) + (1 <> 2) + (2 = 2)", 4},
                    Row{"(1 <= 1) + (1 >= 2) * 10 + (B < Z) * 100", 101},
                    Row{"SGN(B) * 1000 + NEG(A) * 100 + ABS(B)", -1697},
                    Row{"ROUND(1250, -2) + ROUND(-1249, -2) + ROUND(5, -1) * 10 + ROUND(7, -99)", 200},
                    Row{"TRUNC(A) + FLOOR(A) + CEIL(A) + ROUND(A) + ROUND(A, 2)", 35}});
}

/// As knife(), computed by the rules of floats. H is 0.5.
std::string realKnife(const std::string &formula)
{
    std::string nodes = knife(formula, "<pVariable Name='H'>Half</pVariable>") +
                        "<Float Name='Half'><Value>0.5</Value></Float>";
    for (std::size_t place = nodes.find("IntSwiss"); place != std::string::npos;
         place = nodes.find("IntSwiss"))
        nodes.erase(place, 3);
    return nodes;
}

TEST(RealFormula, ComputesWithDoubles)
{
    using Row = std::pair<const char *, double>;
    const Row rows[] = {Row{"A / 2 + H", 4},
                        Row{"0x10 / 32", 0.5},
                        Row{"1.5E-1 + .5", 0.65},
                        Row{"18446744073709551616", 0x1p64},
                        Row{"R.Min / 4 + R.Max + R.Inc", 14.5},
                        Row{"2 ** -1", 0.5},
                        Row{"-2 ** 2", -4},
                        Row{"(H ** H) ** 2", 0.5},
                        Row{"H && 0.25", 1},
                        Row{"!H", 0},
                        Row{"H ? 1.5 : 2.5", 1.5},
                        Row{"(H < 0.75) + (H = 0.5) * 2 + (H <> 0.5) * 4", 3},
                        Row{"(7.9 & 2.9) + (4.2 | 1) * 10 + (7 ^ 2.9) * 100", 552},
                        Row{"(1.9 << 3.9) + (-5.5 >> 1)", 5},
                        Row{"-7.9 % 4.9", -3},
                        Row{"~H", -1},
                        Row{"FLOOR(-2.5) + CEIL(-2.5) * 10 + TRUNC(-2.5) * 100 + ROUND(-2.5) * 1000", -3223},
                        Row{"ROUND(3.14159, 2) + ROUND(2.5, 400)", 5.64},
                        Row{"ROUND(1250, -2) + ROUND(-14.9, -1) + ROUND(7, -400)", 1290},
                        Row{"SGN(-H) + ABS(-H) + NEG(H)", -1},
                        Row{"SQRT(6.25) + EXP(0)", 3.5},
                        Row{"LN(E ** 3) + LG(1000)", 6},
                        Row{"SIN(PI / 2) + COS(PI()) + TAN(0) + ASIN(1) * 2 / PI + ACOS(1) + ATAN(0)", 1},
                        Row{"-1 / Z", -std::numeric_limits<double>::infinity()},
                        Row{"SQRT(-1) = SQRT(-1)", 0},
                        Row{"1e308 * 10 > 1e308", 1}};
    for (const auto &[formula, result] : rows)
        EXPECT_DOUBLE_EQ(Camera{realKnife(formula)}.real("F")->GetValue(), result) << formula;
}

TEST(RealFormula, FaultsAreThoseOfTheirIntegers)
{
    const auto fault = [](const std::string &formula) {
        Camera camera{realKnife(formula)};
        return refusal([&] { camera.real("F")->GetValue(); });
    };
    EXPECT_EQ(fault("1 % 0.5"), "Node 'F': Formula: division by zero");
    EXPECT_EQ(fault("1 << 64"), "Node 'F': Formula: shift by 64 bits");
    EXPECT_EQ(fault("1e300 & 1"), "Node 'F': Formula: 1e+300 is no 64-bit integer");
    EXPECT_EQ(fault("~(Z / Z)"), "Node 'F': Formula: nan is no 64-bit integer, where Z is 0");
    EXPECT_EQ(fault("H.Inc"), "Node 'F': Formula: 'Half' has no increment");
}

std::string repeated(const std::string &text, int count)
{
    std::string all;
    for (int time = 0; time < count; ++time)
        all += text;
    return all;
}

/// Those of the text first, which are found without evaluating.
TEST(Formula, FaultsAreToldWithTheirPlace)
{
    const std::pair<std::string, const char *> rows[] = {
        {"", "ends where a value is expected at character 1"},
        {"1 +", "ends where a value is expected at character 4"},
        {"1 2", "unexpected '2' at character 3"},
        {"(1 + 2", "the end where ')' is expected at character 7"},
        {"1 ? 2", "the end where ':' is expected at character 6"},
        {"1 + $", "unexpected '$' at character 5"},
        {"12ab", "'12ab' is not a number at character 1"},
        {"0x10000000000000000", "'0x10000000000000000' is not a number at character 1"},
        {"1 + Gain", "unknown name 'Gain' at character 5"},
        {"A.Most", "unknown suffix '.Most' at character 1"},
        {"abs(1)", "unknown name 'abs' at character 1"},
        {"A * 1.5", "the fraction 1.5 in an integer formula"},
        {"A * 1e30", "the number past 64 bits 1e+30 in an integer formula"},
        {"SQRT(4)", "a function that gives fractions in an integer formula"},
        {"1 / Z", "division by zero, where Z is 0"},
        {"1 % Z", "division by zero, where Z is 0"},
        {"Z ** -1", "division by zero, where Z is 0"},
        {"1 << 64", "shift by 64 bits"},
        {"1 >> B", "shift by -3 bits, where B is -3"},
        {"A.Enum.On", "'IntA' is no enumeration, so it has no entry 'On'"},
        {repeated("(", 5000), "nested deeper than 128 at character 129"},
        {repeated("-", 5000) + "1", "nested deeper than 128 at character 129"},
        {repeated("1?", 5000), "nested deeper than 128 at character 257"},
        {repeated("1+", 8192) + "1", "longer than 16384 characters, or than 65536 with its expressions"}};
    for (const auto &[formula, fault] : rows) {
        Camera camera{knife(formula)};
        EXPECT_EQ(refusal([&] { camera.value("F"); }), std::string{"Node 'F': Formula: "} + fault)
            << formula.substr(0, 80);
    }
}

TEST(Formula, LongChainsAreFlat)
{
    EXPECT_EQ(Camera{knife(repeated("1+", 8000) + "1")}.value("F"), 8001);
    EXPECT_EQ(Camera{knife(repeated("Z?1:", 4000) + "9")}.value("F"), 9);
    EXPECT_EQ(Camera{knife(repeated("(", 127) + "A" + repeated(")", 127))}.value("F"), 7);
}

TEST(Formula, ConstantsAndExpressionsStandForTheirTexts)
{
    Camera camera{knife("Twice + K",
                        "<Constant Name='K'>0x20</Constant><Expression Name='Once'>A + 1</Expression>"
                        "<Expression Name='Twice'>Once * Once</Expression>")};
    EXPECT_EQ(camera.value("F"), 96) << "an expression is a value, not a piece of text";
    EXPECT_EQ(Camera{knife("K", "<Constant Name='K'>-2</Constant>")}.value("F"), -2);
    Camera faulty{knife("K", "<Constant Name='K'>ten</Constant>")};
    EXPECT_EQ(refusal([&] { faulty.value("F"); }), "Node 'F': Formula: 'ten' is not a number at character 1");
    Camera inner{knife("E1", "<Expression Name='E1'>2 +</Expression>")};
    EXPECT_EQ(refusal([&] { inner.value("F"); }),
              "Node 'F': Formula: ends where a value is expected at character 4 of Expression 'E1'");
}

TEST(Formula, ExpressionsThatUseOneAnotherAreBounded)
{
    Camera circle{
        knife("E1", "<Expression Name='E1'>E2</Expression><Expression Name='E2'>E1 + 1</Expression>")};
    EXPECT_EQ(refusal([&] { circle.value("F"); }),
              "Node 'F': Formula: Expression 'E1' leads back to itself (E1 > E2 > E1)");

    const auto fourfold = [](int count) {
        std::string expressions = "<Expression Name='E0'>1</Expression>";
        for (int step = 1; step <= count; ++step) {
            const std::string last = "E" + std::to_string(step - 1);
            expressions += "<Expression Name='E" + std::to_string(step) + "'>" + last + " + " + last + " + " +
                           last + " + " + last + "</Expression>";
        }
        return expressions;
    };
    EXPECT_EQ(Camera{knife("E8 + E15", fourfold(15))}.value("F"), 0x40010000) << "each is evaluated once";
    Camera longConstant{knife(repeated("C+", 8000) + "C",
                              "<Constant Name='C'>" + std::string(1'000'000, '0') + "1</Constant>")};
    EXPECT_EQ(longConstant.value("F"), 8001) << "a constant is read once";
    Camera deep{knife("E40", fourfold(40))};
    EXPECT_EQ(refusal([&] { deep.value("F"); }),
              "Node 'F': Formula: Expression 'E24' reaches more than 16 expressions deep");
    Camera steps{knife("E10 + E20", fourfold(20))};
    EXPECT_EQ(refusal([&] { steps.value("F"); }),
              "Node 'F': Formula: Expression 'E10' reaches more than 16 expressions deep")
        << "compiled in steps that are short enough";
    std::string expressions;
    for (const char number : {'1', '2', '3', '4', '5'})
        expressions +=
            std::string{"<Expression Name='E"} + number + "'>" + repeated("1+", 8000) + "1</Expression>";
    Camera longInAll{knife("E1+E2+E3+E4+E5", expressions)};
    const std::string refused = refusal([&] { longInAll.value("F"); });
    EXPECT_NE(refused.find("or than 65536 with its expressions"), std::string::npos) << refused;
}

TEST(Formula, AVariableIsAskedOnceAndHasOneValue)
{
    std::string doubling = constant("K60", "1");
    for (int step = 0; step < 60; ++step)
        doubling += "<IntSwissKnife Name='K" + std::to_string(step) + "'><pVariable Name='X'>K" +
                    std::to_string(step + 1) +
                    "</pVariable><Expression Name='Y'>X</Expression><Formula>Y + X.Value</Formula>"
                    "</IntSwissKnife>";
    EXPECT_EQ(Camera{doubling}.value("K0"), std::int64_t{1} << 60);

    Camera live{"<IntReg Name='Live'>" + at(0, 1, "<Cachable>NoCache</Cachable>") + "</IntReg>" +
                "<IntSwissKnife Name='F'><pVariable Name='A'>Live</pVariable>"
                "<Formula>A = A &amp;&amp; A.Max = 255 ? A : -1</Formula></IntSwissKnife>"};
    EXPECT_EQ(live.value("F"), 0);
    EXPECT_EQ(live.port.accesses, std::vector<std::string>{"R 0 1"});
}

TEST(Formula, AllOfADescriptionAreCheckedAtOnce)
{
    Camera camera{knife("1 +") +
                  "<SwissKnife Name='Float'><Formula>SIN(0.5) * PI + E()</Formula></SwissKnife>"
                  "<SwissKnife Name='Bad'><Formula>COS 1</Formula></SwissKnife>"
                  "<IntReg Name='R'><IntSwissKnife><Formula>Q</Formula></IntSwissKnife><Length>1</Length>"
                  "<pPort>Device</pPort></IntReg>"};
    GenICam_3_2_TVN::gcstring_vector errors;
    EXPECT_FALSE(camera.nodeMap._ParseSwissKnifes(&errors));
    ASSERT_EQ(errors.size(), 3U);
    EXPECT_STREQ(errors[0].c_str(), "Node 'F': Formula: ends where a value is expected at character 4");
    EXPECT_STREQ(errors[1].c_str(), "Node 'Bad': Formula: '1' where '(' is expected at character 5");
    EXPECT_STREQ(errors[2].c_str(), "Node 'R/IntSwissKnife': Formula: unknown name 'Q' at character 1");
    EXPECT_TRUE(Camera{knife("1")}.nodeMap._ParseSwissKnifes());

    const std::string text = description(knife("1 +"));
    EXPECT_EQ(refusal([&] {
                  GenApi_3_2_TVN::CNodeMapFactory{GenApi_3_2_TVN::ContentType_Xml, text.data(), text.size(),
                                                  GenApi_3_2_TVN::CacheUsage_Automatic, true};
              }),
              errors[0].c_str());
}

} // namespace
