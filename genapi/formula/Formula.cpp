// SPDX-License-Identifier: MIT
// See the header.
#include "Formula.h"

#include "FormulaEvaluator.h"
#include "FormulaParser.h"
#include "IntegerArithmetic.h"
#include "Number.h"
#include "RealArithmetic.h"

#include <cmath>
#include <functional>
#include <numeric>

namespace GenApi_3_2_TVN {

Formula::Formula(std::string_view text, const FormulaSymbols &symbols)
{
    FormulaBuild build{symbols};
    mainCode = FormulaParser{text, build, *this}.compile();
}

void Formula::requireInteger() const
{
    for (const Literal &literal : literals) {
        if (literal.integer)
            continue;
        const bool isFraction = std::abs(literal.real) < 0x1p63;
        throw FormulaError{(isFraction ? "the fraction " : "the number past 64 bits ") +
                           Number{literal.real}.text() + " in an integer formula"};
    }
    for (const Code &code : codes) {
        for (const Instruction &instruction : code) {
            if (!IntegerArithmetic::has(instruction.operation))
                throw FormulaError{"a function that gives fractions in an integer formula"};
        }
    }
}

std::size_t Formula::stepCount() const
{
    return std::transform_reduce(codes.begin(), codes.end(), std::size_t{0}, std::plus<>{},
                                 [](const Code &code) { return code.size(); });
}

template <class Arithmetic>
typename Arithmetic::Number
Formula::run(const std::function<typename Arithmetic::Number(const VariableUse &)> &load) const
{
    FormulaEvaluator<Arithmetic> evaluator{codes, literals, uses, load};
    try {
        return evaluator.evaluate(mainCode);
    } catch (FormulaError &error) {
        error.operands = evaluator.operands();
        throw;
    }
}

std::int64_t Formula::evaluate(const std::function<std::int64_t(const VariableUse &)> &load) const
{
    return run<IntegerArithmetic>(load);
}

double Formula::evaluate(const std::function<double(const VariableUse &)> &load) const
{
    return run<RealArithmetic>(load);
}

} // namespace GenApi_3_2_TVN
