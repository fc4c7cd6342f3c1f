// SPDX-License-Identifier: MIT
// See the header.
#include "Formula.h"

#include "FormulaEvaluator.h"
#include "FormulaParser.h"
#include "IntegerArithmetic.h"

namespace GenApi_3_2_TVN {

Formula::Formula(std::string_view text, const FormulaSymbols &symbols)
{
    FormulaBuild build{symbols, {}, {}};
    mainCode = FormulaParser{text, build, *this}.compile();
}

void Formula::requireInteger() const
{
    for (const Literal &literal : literals) {
        if (!literal.integer)
            throw FormulaError{"the fraction " + std::to_string(literal.real) + " in an integer formula"};
    }
    for (const Code &code : codes) {
        for (const Instruction &instruction : code) {
            if (!IntegerArithmetic::has(instruction.operation))
                throw FormulaError{"a function that gives fractions in an integer formula"};
        }
    }
}

std::int64_t Formula::evaluateInteger(const std::function<std::int64_t(const VariableUse &)> &load) const
{
    return FormulaEvaluator<IntegerArithmetic, std::function<std::int64_t(const VariableUse &)>>(
               codes, literals, uses, load)
        .evaluate(mainCode);
}

} // namespace GenApi_3_2_TVN
