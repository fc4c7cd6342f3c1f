// SPDX-License-Identifier: MIT
// Fuzzes formulas by both arithmetics. The first line of an input is the formula; each other line gives it a name:
//     variable Gain -5
//     constant K 0x10
//     expression Sum Gain + K
#include "Formula.h"

#include "FuzzTarget.h"

#include <cmath>
#include <sstream>

using namespace GenApi_3_2_TVN;

namespace {

struct FormulaInput
{
    std::string formula;
    FormulaSymbols symbols;
    std::vector<double> values; ///< of the variables
};

FormulaInput parseInput(const std::string &bytes)
{
    FormulaInput input;
    std::istringstream lines{bytes};
    std::getline(lines, input.formula);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words{line};
        std::string kind;
        std::string name;
        words >> kind >> name >> std::ws;
        const std::string text{std::istreambuf_iterator<char>{words}, {}};
        if (kind == "variable" && input.symbols.variables.emplace(name, input.values.size()).second)
            input.values.push_back(std::strtod(text.c_str(), nullptr));
        else if (kind == "constant")
            input.symbols.constants.emplace(name, text);
        else if (kind == "expression")
            input.symbols.expressions.emplace(name, text);
    }
    return input;
}

std::int64_t integerOf(double value)
{
    return std::abs(value) < 0x1p63 ? static_cast<std::int64_t>(value) : 0;
}

/// The result as text, or why there is none.
template <class Number>
std::string resultOf(const Formula &formula, const FormulaInput &input)
{
    std::size_t loads = 0;
    const auto load = [&](const VariableUse &use) -> Number {
        ++loads;
        const double value = input.values.at(use.variable) + static_cast<int>(use.property);
        if constexpr (std::is_same_v<Number, double>)
            return value;
        else
            return integerOf(value);
    };
    std::ostringstream result;
    try {
        const Number number = formula.evaluate(std::function<Number(const VariableUse &)>{load});
        if (number == number)
            result << std::hexfloat << number;
        else
            result << "no number";
    } catch (const FormulaError &error) {
        require(!error.text.empty(), "an error without words");
        result << error.text;
    }
    require(loads <= formula.stepCount(), "more steps than stepCount() tells");
    return result.str();
}

/// The results of \p text by both arithmetics, or why it does not compile.
std::string resultsOf(const std::string &text, const FormulaInput &input)
{
    const Formula formula{text, input.symbols};
    const std::string real = resultOf<double>(formula, input);
    require(real == resultOf<double>(formula, input), "two evaluations differ");
    try {
        formula.requireInteger();
    } catch (const FormulaError &error) {
        return real + ", " + error.text;
    }
    return real + ", " + resultOf<std::int64_t>(formula, input);
}

/// Parentheses around the whole, and blanks, change nothing, but for a formula at a limit.
void requireSameInParentheses(const FormulaInput &input, const std::string &results)
{
    try {
        const std::string others = resultsOf("( " + input.formula + " )", input);
        require(others == results, "in parentheses: " + others + "\nwithout: " + results);
    } catch (const FormulaError &error) {
        const bool isLimit = error.text.starts_with("nested deeper") || error.text.starts_with("longer than");
        require(isLimit, "in parentheses: " + error.text + "\nwithout: " + results);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const FormulaInput input = parseInput({reinterpret_cast<const char *>(bytes), size});
    try {
        requireSameInParentheses(input, resultsOf(input.formula, input));
    } catch (const FormulaError &error) {
        require(!error.text.empty(), "an error without words");
    }
    return 0;
}
