// SPDX-License-Identifier: MIT
// See the header. What is left out here stands in known-differences.txt, where the oracle is asked too.
#include "FormulaGenerator.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace {

constexpr double exactWhole = 0x1p50; ///< doubles up to here hold each integer, sums of a few included
constexpr double bitsLimit = 0x1p31;

struct Operator
{
    std::string_view symbol;
    int precedence;
};

constexpr std::array<Operator, 18> operators{{{"||", 1},
                                              {"&&", 2},
                                              {"|", 3},
                                              {"^", 4},
                                              {"&", 5},
                                              {"=", 6},
                                              {"<>", 6},
                                              {"<", 7},
                                              {">", 7},
                                              {"<=", 7},
                                              {">=", 7},
                                              {"<<", 8},
                                              {">>", 8},
                                              {"+", 9},
                                              {"-", 9},
                                              {"*", 10},
                                              {"/", 10},
                                              {"%", 10}}};
constexpr int conditionalPrecedence = 0;
constexpr int logicPrecedence = 2; ///< this and below
constexpr int shiftPrecedence = 8;
constexpr int sumPrecedence = 9;
constexpr int unaryPrecedence = 11;
constexpr int powerPrecedence = 12;

/// Functions of a float, of arguments that they are defined for, with a bound of the result.
constexpr std::array<std::string_view, 9> functions{"SIN(@)",       "COS(@)",       "ATAN(@)",
                                                    "LN(ABS(@)+1)", "LG(ABS(@)+1)", "EXP(-ABS(@))",
                                                    "ASIN(SIN(@))", "ACOS(COS(@))", "TAN(ATAN(@)/2)"};
constexpr double functionBound = 100;

std::string within(const Term &term, int precedence)
{
    return term.precedence < precedence ? "(" + term.text + ")" : term.text;
}

class FormulaGenerator
{
public:
    FormulaGenerator(Random &random, Arithmetic arithmetic, const std::vector<Term> &leaves)
        : random{random}, isFloat{arithmetic == Arithmetic::Float}, leaves{leaves}
    {}

    Term term(int depth)
    {
        switch (depth == 0 ? 0 : random.below(8)) {
        case 0:
            return leaf();
        case 1:
            return unary(depth - 1);
        case 2:
            return power();
        case 3:
            return function(depth - 1);
        case 4:
            return conditional(depth - 1);
        case 5:
            if (!isFloat)
                return chain();
            [[fallthrough]];
        default:
            return binary(depth - 1);
        }
    }

private:
    Term fit(const Term &term) { return !isFloat || term.bound <= exactWhole ? term : literal(); }
    bool canTakeBits(const Term &term) const { return !isFloat || (term.isWhole && term.bound <= bitsLimit); }
    std::string spaced(std::string_view symbol)
    {
        const std::string before = random.pick({"", " "});
        return before + std::string{symbol} + random.pick({"", " "});
    }

    Term leaf() { return !leaves.empty() && random.chance(75) ? random.pick(leaves) : literal(); }

    /// Fractions are those that the oracle reads exactly.
    Term literal()
    {
        if (!isFloat || random.chance(50)) {
            const std::uint64_t number = random.bits() >> (32 + random.below(32));
            return {random.notation(number), static_cast<double>(number)};
        }
        const std::string number = std::to_string(random.below(1000));
        const std::string exponent = std::to_string(random.below(4));
        return {random.pick({std::string{"PI()"}, std::string{"E"}, std::string{"E()"}, number + ".5",
                             number + ".25", number + ".5e+" + exponent}),
                1e6, false};
    }

    Term unary(int depth)
    {
        const Term inner = term(depth);
        // Not directly before a power: there the oracle takes the sign first.
        const std::string operand =
            inner.precedence == powerPrecedence ? "(" + inner.text + ")" : within(inner, unaryPrecedence);
        if (canTakeBits(inner) && random.chance(40))
            return {"~" + operand, inner.bound + 1, true, unaryPrecedence};
        return {random.pick({"-", "-", "+"}) + operand, inner.bound, inner.isWhole, unaryPrecedence};
    }

    /// In integers of a base below 16, since the oracle computes powers as doubles.
    Term power()
    {
        const std::string exponent = random.pick({"0", "1", "2", "3", "2**1"});
        const Term base = leaf();
        if (!isFloat)
            return {"(" + base.text + "& 15)" + spaced("**") + exponent, 4096, true, powerPrecedence};
        if (random.chance(20))
            return {"(ABS(" + base.text + ")+1)**-" + exponent, 1, false, powerPrecedence};
        return fit({base.text + spaced("**") + exponent, std::max(1.0, std::pow(base.bound, 3)), base.isWhole,
                    powerPrecedence});
    }

    Term function(int depth)
    {
        const Term inner = term(depth);
        const std::string argument = "(" + inner.text + ")";
        switch (random.below(isFloat ? 8 : 2)) {
        case 0:
            return {"SGN" + argument, 1};
        case 1:
            return {"NEG" + argument, inner.bound, inner.isWhole};
        case 2:
            return {"ABS" + argument, inner.bound, inner.isWhole};
        case 3:
            return {"SQRT(ABS" + argument + ")", inner.bound + 1, false};
        case 4:
            return {random.pick({"TRUNC", "FLOOR", "CEIL"}) + argument, inner.bound + 1};
        default:
            std::string text{random.pick(functions)};
            return {text.replace(text.find('@'), 1, inner.text), functionBound, false};
        }
    }

    /// Never a fraction: what one means as a condition, the two sides see differently.
    Term truth(int depth)
    {
        const Term value = term(depth);
        return value.isWhole ? value : Term{within(value, 8) + spaced(">") + "0", 1, true, 7};
    }

    /// The oracle takes a condition as the second operand in parentheses only.
    Term conditional(int depth)
    {
        const Term condition = truth(depth);
        const Term yes = term(depth);
        const Term no = term(depth);
        return {within(condition, conditionalPrecedence + 1) + spaced("?") +
                    within(yes, conditionalPrecedence + 1) + ":" + no.text,
                std::max(yes.bound, no.bound), yes.isWhole && no.isWhole, conditionalPrecedence};
    }

    /// A distance of a shift is small, a divisor neither zero nor, in integers, negative.
    Term rightOperand(const Operator &by, const Term &operand)
    {
        const bool isDivision = by.symbol == "/" || by.symbol == "%";
        if (isDivision && !isFloat)
            return {"(" + within(operand, 6) + " & 255 | 1)", 255};
        if (isDivision && !operand.isWhole)
            return {"(ABS(" + operand.text + ")+1)", operand.bound + 1, false};
        if (isDivision || by.precedence == shiftPrecedence)
            return {std::to_string(1 + random.below(isFloat ? 15 : 62)), 62};
        return operand;
    }

    Term binary(int depth)
    {
        const Operator &by = random.pick(operators);
        const bool isLogic = by.precedence <= logicPrecedence;
        const Term left = isLogic ? truth(depth) : term(depth);
        const Term right = rightOperand(by, isLogic ? truth(depth) : term(depth));
        const bool areWhole = left.isWhole && right.isWhole;
        const bool isOnBits = by.symbol == "%" || by.precedence == shiftPrecedence ||
                              (by.precedence > logicPrecedence && by.precedence < 6);
        if (isOnBits && (!canTakeBits(left) || !canTakeBits(right)))
            return left;
        const auto joined = [&](double bound, bool isWhole) {
            return fit({within(left, by.precedence) + spaced(by.symbol) + within(right, by.precedence + 1),
                        bound, isWhole, by.precedence});
        };
        if (by.symbol == "*")
            return joined(left.bound * right.bound, areWhole);
        if (by.symbol == "/")
            return joined(left.bound, !isFloat);
        if (by.precedence == sumPrecedence)
            return joined(left.bound + right.bound, areWhole);
        if (by.precedence == shiftPrecedence)
            return joined(left.bound * 0x1p15, true);
        return joined(isOnBits ? 2 * std::max(left.bound, right.bound) + 1 : 1, true);
    }

    /// Operators in a row, without parentheses: only integers, which wrap, can take what comes out. Not a shift,
    /// which would reckon with all that follows.
    Term chain()
    {
        std::string text = leaf().text;
        for (std::size_t length = 3 + random.below(5); length > 0; --length) {
            const Operator &by = random.pick(operators);
            const std::string sign = random.pick({"", "", "-", "~"});
            if (by.precedence == shiftPrecedence)
                continue;
            const bool isDivision = by.symbol == "/" || by.symbol == "%";
            text += spaced(by.symbol);
            text += isDivision ? std::to_string(1 + random.below(62)) : sign + leaf().text;
        }
        return {text, 0, true, logicPrecedence - 1};
    }

    Random &random;
    bool isFloat;
    const std::vector<Term> &leaves;
};

} // namespace

Term randomTerm(Random &random, Arithmetic arithmetic, const std::vector<Term> &leaves, int depth)
{
    return FormulaGenerator{random, arithmetic, leaves}.term(depth);
}
