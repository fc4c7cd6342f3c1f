// SPDX-License-Identifier: MIT
// Formulas, asked through a node as descriptions use them: expression, variables and result, by the rules of
// integers and by those of floats, and for the faulty ones the whole text.
#include "Camera.h"

#include <gtest/gtest.h>

#include <cmath>
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
    return "<Integer Name='IntA'><Value>7</Value></Integer><Integer Name='IntB'><Value>-3</Value></Integer>"
           "<Integer Name='IntZ'><Value>0</Value></Integer>"
           "<Integer Name='IntR'><Value>6</Value><Min>2</Min><Max>10</Max><Inc>4</Inc></Integer>"
           "<IntSwissKnife Name='F'><pVariable Name='A'>IntA</pVariable><pVariable Name='B'>IntB</pVariable>"
           "<pVariable Name='Z'>IntZ</pVariable><pVariable Name='R'>IntR</pVariable>"
           "<pVariable Name='Declared.Max'>IntR</pVariable>" +
           more + "<Formula>" + escaped(formula) + "</Formula></IntSwissKnife>";
}

struct FormulaRow
{
    const char *name;
    std::string formula;
    std::int64_t result;
};

void PrintTo(const FormulaRow &row, std::ostream *out)
{
    *out << row.formula;
}

class IntegerFormula : public testing::TestWithParam<FormulaRow>
{};

TEST_P(IntegerFormula, Gives)
{
    EXPECT_EQ(Camera{knife(GetParam().formula)}.value("F"), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, IntegerFormula,
    testing::Values(
        FormulaRow{"decimal", " 12 ", 12}, FormulaRow{"hexadecimal", "0xfF", 255},
        FormulaRow{"all_64_bits", "0xFFFFFFFFFFFFFFFF", -1}, FormulaRow{"whole_float", "1.5e1 + 2.0", 17},
        FormulaRow{"variables", "A * B", -21}, FormulaRow{"value_suffix", "A.Value", 7},
        FormulaRow{"range_suffixes", "R.Min * 100 + R.Max * 10 + R.Inc", 304},
        FormulaRow{"suffix_in_the_declaration", "Declared.Max", 10},
        FormulaRow{"product_before_sum", "1 + 2 * 3", 7}, FormulaRow{"sum_before_shift", "1 << 2 + 1", 8},
        FormulaRow{"shift_before_order", "1 << 2 < 5", 1},
        FormulaRow{"order_before_equality", "2 > 1 = 1", 1},
        FormulaRow{"equality_before_and", "6 & 2 = 2", 0}, FormulaRow{"and_before_xor", "1 ^ 3 & 2", 3},
        FormulaRow{"xor_before_or", "4 | 1 ^ 1", 4}, FormulaRow{"or_before_lazy_and", "0 && 1 | 1", 0},
        FormulaRow{"lazy_and_before_lazy_or", "1 || 0 && 0", 1},
        FormulaRow{"lazy_or_before_conditional", "0 || 1 ? 5 : 6", 5},
        FormulaRow{"left_to_right", "100 - 10 - 1", 89},
        FormulaRow{"quotients_left_to_right", "100 / 10 / 5", 2}, FormulaRow{"parentheses", "(1 + 2) * 3", 9},
        FormulaRow{"conditional_right_to_left", "0 ? 1 : 0 ? 2 : 3", 3},
        FormulaRow{"conditional_within", "1 ? 0 ? 1 : 2 : 3", 2},
        FormulaRow{"power_right_to_left", "2 ** 3 ** 2", 512}, FormulaRow{"power_before_sign", "-2 ** 2", -4},
        FormulaRow{"power_of_a_group", "(-2) ** 2", 4},
        FormulaRow{"negative_power_cuts_to_zero", "2 ** -1", 0},
        FormulaRow{"negative_power_of_minus_one", "(-1) ** -3", -1},
        FormulaRow{"signs_in_a_row", "- - + 5", 5}, FormulaRow{"complement", "~0", -1},
        FormulaRow{"negation", "!A + !Z", 1},
        FormulaRow{"other_spellings", "(1 == 1) + (1 != 2) + (1 <> 2) + (2 = 2)", 4},
        FormulaRow{"comparisons", "(1 <= 1) + (1 >= 2) * 10 + (B < Z) * 100", 101},
        FormulaRow{"truth_is_one", "(5 || 0) + (3 && 4)", 2},
        FormulaRow{"division_cuts_toward_zero", "B / 2", -1},
        FormulaRow{"remainder_has_the_sign_of_the_left", "B % 2", -1},
        FormulaRow{"shift_keeps_the_sign", "B >> 1", -2},
        FormulaRow{"shift_into_the_sign", "1 << 63", lowest},
        FormulaRow{"branch_not_taken", "Z ? 1 / Z : 4", 4}, FormulaRow{"lazy_and_stops", "Z && 1 / Z", 0},
        FormulaRow{"lazy_or_stops", "A || 1 / Z", 1},
        FormulaRow{"sum_wraps", "0x7FFFFFFFFFFFFFFF + 1", lowest},
        FormulaRow{"difference_wraps", "(1 << 63) - 1", highest},
        FormulaRow{"product_wraps", "0x4000000000000000 * 4", 0},
        FormulaRow{"lowest_by_minus_one", "(1 << 63) / -1", lowest},
        FormulaRow{"lowest_rest_minus_one", "(1 << 63) % -1", 0},
        FormulaRow{"lowest_without_sign", "ABS(1 << 63)", lowest},
        FormulaRow{"power_wraps", "3 ** 41", static_cast<std::int64_t>(18026252303461234787ULL)},
        FormulaRow{"functions", "SGN(B) * 1000 + NEG(A) * 100 + ABS(B)", -1697},
        FormulaRow{"rounding_before_the_point",
                   "ROUND(1250, -2) + ROUND(-1249, -2) + ROUND(5, -1) * 10 + ROUND(7, -99)", 200},
        FormulaRow{"whole_numbers_are_round", "TRUNC(A) + FLOOR(A) + CEIL(A) + ROUND(A) + ROUND(A, 2)", 35}),
    [](const auto &row) { return row.param.name; });

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

struct RealRow
{
    const char *name;
    std::string formula;
    double result;
};

void PrintTo(const RealRow &row, std::ostream *out)
{
    *out << row.formula;
}

class RealFormula : public testing::TestWithParam<RealRow>
{};

TEST_P(RealFormula, Gives)
{
    const double result = Camera{realKnife(GetParam().formula)}.real("F")->GetValue();
    if (std::isnan(GetParam().result))
        EXPECT_TRUE(std::isnan(result)) << result;
    else
        EXPECT_DOUBLE_EQ(result, GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, RealFormula,
    testing::Values(
        RealRow{"fractions", "A / 2 + H", 4}, RealRow{"hexadecimal", "0x10 / 32", 0.5},
        RealRow{"exponent", "1.5E-1 + .5", 0.65}, RealRow{"past_64_bits", "18446744073709551616", 0x1p64},
        RealRow{"range_suffixes", "R.Min / 4 + R.Max + R.Inc", 14.5},
        RealRow{"negative_power", "2 ** -1", 0.5}, RealRow{"power_before_sign", "-2 ** 2", -4},
        RealRow{"power_of_a_fraction", "(H ** H) ** 2", 0.5}, RealRow{"truth_of_a_fraction", "H && 0.25", 1},
        RealRow{"negation_of_a_fraction", "!H", 0}, RealRow{"condition_of_a_fraction", "H ? 1.5 : 2.5", 1.5},
        RealRow{"comparison", "(H < 0.75) + (H = 0.5) * 2 + (H <> 0.5) * 4", 3},
        RealRow{"bits_of_the_integers", "(7.9 & 2.9) + (4.2 | 1) * 10 + (7 ^ 2.9) * 100", 552},
        RealRow{"shifts_of_the_integers", "(1.9 << 3.9) + (-5.5 >> 1)", 5},
        RealRow{"remainder_of_the_integers", "-7.9 % 4.9", -3}, RealRow{"complement", "~H", -1},
        RealRow{"rounding", "FLOOR(-2.5) + CEIL(-2.5) * 10 + TRUNC(-2.5) * 100 + ROUND(-2.5) * 1000", -3223},
        RealRow{"rounding_to_digits", "ROUND(3.14159, 2) + ROUND(2.5, 400)", 5.64},
        RealRow{"rounding_before_the_point", "ROUND(1250, -2) + ROUND(-14.9, -1) + ROUND(7, -400)", 1290},
        RealRow{"signs", "SGN(-H) + ABS(-H) + NEG(H)", -1}, RealRow{"roots", "SQRT(6.25) + EXP(0)", 3.5},
        RealRow{"logarithms", "LN(E ** 3) + LG(1000)", 6},
        RealRow{"angles", "SIN(PI / 2) + COS(PI()) + TAN(0) + ASIN(1) * 2 / PI + ACOS(1) + ATAN(0)", 1},
        RealRow{"division_by_zero", "-1 / Z", -std::numeric_limits<double>::infinity()},
        RealRow{"no_number", "SQRT(-1)", std::nan("")}, RealRow{"overflow", "1e308 * 10 > 1e308", 1}),
    [](const auto &row) { return row.param.name; });

TEST(Formula, FaultsOfFloatsAreThoseOfTheirIntegers)
{
    const auto fault = [](const std::string &formula) {
        Camera camera{realKnife(formula)};
        return refusal([&] { camera.real("F")->GetValue(); });
    };
    EXPECT_EQ(fault("1 % 0.5"), "Node 'F': Formula: division by zero");
    EXPECT_EQ(fault("1 << 64"), "Node 'F': Formula: shift by 64 bits");
    EXPECT_EQ(fault("1e300 & 1"), "Node 'F': Formula: 1e+300 is no 64-bit integer");
    EXPECT_EQ(fault("~(Z / Z)"), "Node 'F': Formula: nan is no 64-bit integer");
    EXPECT_EQ(fault("H.Inc"), "Node 'F': Formula: 'Half' has no increment");
}

struct FaultRow
{
    const char *name;
    std::string formula;
    const char *text;
};

void PrintTo(const FaultRow &row, std::ostream *out)
{
    *out << row.name;
}

class FaultyFormula : public testing::TestWithParam<FaultRow>
{};

/// Faults of the text are found without evaluating, those of the values are not.
TEST_P(FaultyFormula, IsRefused)
{
    Camera camera{knife(GetParam().formula)};
    EXPECT_EQ(refusal([&] { camera.value("F"); }), std::string{"Node 'F': Formula: "} + GetParam().text);
}

std::string repeated(const std::string &text, int count)
{
    std::string all;
    for (int time = 0; time < count; ++time)
        all += text;
    return all;
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FaultyFormula,
    testing::Values(
        FaultRow{"empty", "", "ends where a value is expected at character 1"},
        FaultRow{"no_right_side", "1 +", "ends where a value is expected at character 4"},
        FaultRow{"no_operator", "1 2", "unexpected '2' at character 3"},
        FaultRow{"open_parenthesis", "(1 + 2", "the end where ')' is expected at character 7"},
        FaultRow{"no_else", "1 ? 2", "the end where ':' is expected at character 6"},
        FaultRow{"strange_character", "1 + $", "unexpected '$' at character 5"},
        FaultRow{"strange_number", "12ab", "'12ab' is not a number at character 1"},
        FaultRow{"number_past_64_bits", "0x10000000000000000",
                 "'0x10000000000000000' is not a number at character 1"},
        FaultRow{"unknown_name", "1 + Gain", "unknown name 'Gain' at character 5"},
        FaultRow{"unknown_suffix", "A.Most", "unknown suffix '.Most' at character 1"},
        FaultRow{"lower_case_function", "abs(1)", "unknown name 'abs' at character 1"},
        FaultRow{"fraction", "A * 1.5", "the fraction 1.5 in an integer formula"},
        FaultRow{"large_number", "A * 1e30", "the number past 64 bits 1e+30 in an integer formula"},
        FaultRow{"fraction_function", "SQRT(4)", "a function that gives fractions in an integer formula"},
        FaultRow{"division_by_zero", "1 / Z", "division by zero"},
        FaultRow{"rest_of_zero", "1 % Z", "division by zero"},
        FaultRow{"zero_to_a_negative_power", "Z ** -1", "division by zero"},
        FaultRow{"shift_by_64", "1 << 64", "shift by 64 bits"},
        FaultRow{"shift_back", "1 >> B", "shift by -3 bits"},
        FaultRow{"enumeration_entry", "A.Enum.On", "'IntA' is no enumeration, so it has no entry 'On'"},
        FaultRow{"deep_parentheses", repeated("(", 5000), "nested deeper than 128 at character 129"},
        FaultRow{"deep_signs", repeated("-", 5000) + "1", "nested deeper than 128 at character 129"},
        FaultRow{"deep_branches", repeated("1?", 5000), "nested deeper than 128 at character 257"},
        FaultRow{"a_megabyte", repeated("1+", 500'000) + "1",
                 "longer than 16384 characters, or than 65536 with its expressions"}),
    [](const auto &row) { return row.param.name; });

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

    const auto doubling = [](int count) {
        std::string expressions = "<Expression Name='E0'>1</Expression>";
        for (int step = 1; step <= count; ++step)
            expressions += "<Expression Name='E" + std::to_string(step) + "'>E" + std::to_string(step - 1) +
                           " + E" + std::to_string(step - 1) + "</Expression>";
        return expressions;
    };
    EXPECT_EQ(Camera{knife("E16 + E31", doubling(31))}.value("F"), 0x80010000) << "each is evaluated once";
    Camera deep{knife("E40", doubling(40))};
    EXPECT_EQ(refusal([&] { deep.value("F"); }),
              "Node 'F': Formula: Expression 'E8' reaches more than 32 expressions deep");
    Camera steps{knife("E20 + E40", doubling(40))};
    EXPECT_EQ(refusal([&] { steps.value("F"); }),
              "Node 'F': Formula: Expression 'E20' reaches more than 32 expressions deep")
        << "compiled in steps that are short enough";
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
