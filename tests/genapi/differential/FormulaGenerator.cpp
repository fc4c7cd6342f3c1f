// SPDX-License-Identifier: MIT
// See the header. What is left out here stands in known-differences.txt, where the oracle is asked too.
#include "FormulaGenerator.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace {

constexpr int conditionalPrecedence = 0;
constexpr int unaryPrecedence = 11;
constexpr int powerPrecedence = 12;
constexpr double exactWhole = 0x1p50; ///< doubles up to here hold each integer, sums of a few included
constexpr double bitsLimit = 0x1p31;

enum class Group
{
    Logic,
    Bits,
    Comparison,
    Shift,
    Sum,
    Product,
    Quotient,
    Remainder
};

struct Operator
{
    const char *symbol;
    int precedence;
    Group group;
};

constexpr std::array<Operator, 18> operators{{
    {"||", 1, Group::Logic},
    {"&&", 2, Group::Logic},
    {"|", 3, Group::Bits},
    {"^", 4, Group::Bits},
    {"&", 5, Group::Bits},
    {"=", 6, Group::Comparison},
    {"<>", 6, Group::Comparison},
    {"<", 7, Group::Comparison},
    {">", 7, Group::Comparison},
    {"<=", 7, Group::Comparison},
    {">=", 7, Group::Comparison},
    {"<<", 8, Group::Shift},
    {">>", 8, Group::Shift},
    {"+", 9, Group::Sum},
    {"-", 9, Group::Sum},
    {"*", 10, Group::Product},
    {"/", 10, Group::Quotient},
    {"%", 10, Group::Remainder},
}};

std::string within(const Term &term, int precedence)
{
    return term.precedence < precedence ? "(" + term.text + ")" : term.text;
}

} // namespace

/// ROUND comes first if at all: behind parentheses the oracle does not take it.
Term FormulaGenerator::formula(int depth)
{
    const Term rest = term(depth);
    if (!isFloat || !areVariables || random.chance(75))
        return rest;
    const Term rounded = leaf();
    const std::string digits = random.chance(50) ? "," + space() + std::to_string(random.below(4)) : "";
    return {"ROUND(" + rounded.text + digits + ")" + space() + "+" + within(rest, 10),
            rest.bound + rounded.bound + 1, false, 9};
}

Term FormulaGenerator::term(int depth)
{
    if (depth == 0)
        return leaf();
    switch (random.below(8)) {
    case 0:
        return unary(depth - 1);
    case 1:
        return power();
    case 2:
        return function(depth - 1);
    case 3:
        return conditional(depth - 1);
    case 4:
        if (!isBounded)
            return chain();
        [[fallthrough]];
    default:
        return binary(depth - 1);
    }
}

/// Operators of all precedences in a row, without parentheses: only integers, which wrap, can take what comes out.
Term FormulaGenerator::chain()
{
    std::string text = leaf().text;
    bool isDistance = false;
    for (std::size_t length = 3 + random.below(5); length > 0;) {
        const Operator &next = random.pick(operators);
        if (isDistance && next.precedence > 7) // it would reckon on with the distance of a shift
            continue;
        isDistance = next.group == Group::Shift;
        const bool isDivision = next.group == Group::Quotient || next.group == Group::Remainder;
        const std::string operand = isDistance || isDivision ? std::to_string(1 + random.below(62))
                                    : random.chance(30)      ? (random.chance(50) ? "-" : "~") + leaf().text
                                                             : leaf().text;
        text += space() + next.symbol + " " + operand;
        --length;
    }
    return {text, 0, true, conditionalPrecedence + 1};
}

Term FormulaGenerator::leaf()
{
    if (!leaves.empty() && random.chance(75))
        return random.pick(leaves);
    return literal();
}

/// Fractions are those that the oracle reads exactly.
Term FormulaGenerator::literal()
{
    const std::uint64_t number = random.bits() >> (32 + random.below(32));
    if (!isFloat || random.chance(50)) {
        std::array<char, 24> text{};
        std::snprintf(text.data(), text.size(), random.chance(30) ? "0x%llX" : "%llu",
                      static_cast<unsigned long long>(number));
        return {text.data(), static_cast<double>(number)};
    }
    switch (random.below(4)) {
    case 0:
        return {"PI()", 4, false};
    case 1:
        return {random.chance(50) ? "E()" : "E", 3, false};
    case 2:
        return {std::to_string(number % 100) + ".5e+" + std::to_string(random.below(4)), 1e5, false};
    default:
        return {std::to_string(number % 1000) + (random.chance(50) ? ".25" : ".5"), 1000, false};
    }
}

/// Keeps a term that any operation may follow; another one is out of bounds.
Term FormulaGenerator::fit(Term term)
{
    return !isBounded || term.bound <= exactWhole ? term : literal();
}

bool FormulaGenerator::canTakeBits(const Term &term) const
{
    return !isBounded || (term.isWhole && term.bound <= bitsLimit);
}

std::string FormulaGenerator::space()
{
    return random.chance(50) ? " " : "";
}

Term FormulaGenerator::unary(int depth)
{
    const Term inner = term(depth);
    // Not directly before a power: there the oracle takes the sign first.
    const std::string operand =
        inner.precedence == powerPrecedence ? "(" + inner.text + ")" : within(inner, unaryPrecedence);
    if (canTakeBits(inner) && random.chance(40))
        return {"~" + operand, inner.bound + 1, true, unaryPrecedence};
    return {(random.chance(80) ? "-" : "+") + operand, inner.bound, inner.isWhole, unaryPrecedence};
}

/// In integers of a base below 16, since the oracle computes powers as doubles.
Term FormulaGenerator::power()
{
    constexpr std::array<const char *, 5> exponents{"0", "1", "2", "3", "2**1"};
    const std::string exponent = random.pick(exponents);
    const Term base = leaf();
    if (!isFloat)
        return {"(" + base.text + space() + "& 15)" + space() + "**" + exponent, 4096, true, powerPrecedence};
    if (random.chance(20))
        return {"(ABS(" + base.text + ")+1)**-" + exponent, 1, false, powerPrecedence};
    return fit({base.text + "**" + space() + exponent, std::max(1.0, std::pow(base.bound, 3)), base.isWhole,
                powerPrecedence});
}

Term FormulaGenerator::function(int depth)
{
    if (isFloat && random.chance(80))
        return floatFunction(depth);
    const Term inner = term(depth);
    return random.chance(50) ? Term{"SGN(" + inner.text + ")", 1, true}
                             : Term{"NEG(" + inner.text + ")", inner.bound, inner.isWhole};
}

/// Of arguments that they are defined for.
Term FormulaGenerator::floatFunction(int depth)
{
    constexpr std::array<std::string_view, 3> toWhole{"TRUNC", "FLOOR", "CEIL"};
    constexpr std::array<std::string_view, 9> bounded{"SIN(@)",       "COS(@)",       "ATAN(@)",
                                                      "LN(ABS(@)+1)", "LG(ABS(@)+1)", "EXP(-ABS(@))",
                                                      "ASIN(SIN(@))", "ACOS(COS(@))", "TAN(ATAN(@)/2)"};
    const Term inner = term(depth);
    const std::string argument = "(" + inner.text + ")";
    switch (random.below(6)) {
    case 0:
        return {"ABS" + argument, inner.bound, inner.isWhole};
    case 1:
        return {"SQRT(ABS" + argument + ")", inner.bound + 1, false};
    case 2:
        return {std::string{random.pick(toWhole)} + argument, inner.bound + 1, true};
    default:
        std::string text{random.pick(bounded)};
        return {text.replace(text.find('@'), 1, inner.text), 100, false};
    }
}

/// Never a fraction: what one means as a condition, the two sides see differently.
Term FormulaGenerator::truth(int depth)
{
    const Term value = term(depth);
    return value.isWhole ? value : Term{within(value, 8) + ">" + space() + "0", 1, true, 7};
}

/// The oracle takes a condition as the second operand in parentheses only.
Term FormulaGenerator::conditional(int depth)
{
    const Term condition = truth(depth);
    const Term yes = term(depth);
    const Term no = term(depth);
    return {within(condition, conditionalPrecedence + 1) + space() + "?" + space() +
                within(yes, conditionalPrecedence + 1) + ":" + space() + no.text,
            std::max(yes.bound, no.bound), yes.isWhole && no.isWhole, conditionalPrecedence};
}

/// Never zero, and in integers never negative.
Term FormulaGenerator::divisor(int depth, bool mustBeWhole)
{
    if (random.chance(50))
        return {std::to_string(1 + random.below(500)), 500};
    const Term value = term(depth);
    if (!isBounded)
        return {"(" + within(value, 6) + " & 255 | 1)", 255};
    return mustBeWhole ? Term{"7", 7} : Term{"(ABS(" + value.text + ")+1)", value.bound + 1, value.isWhole};
}

Term FormulaGenerator::binary(int depth)
{
    const Operator &chosen = random.pick(operators);
    Term left = chosen.group == Group::Logic ? truth(depth) : term(depth);
    Term right = chosen.group == Group::Logic ? truth(depth) : term(depth);
    double bound = 1;
    bool isWhole = true;
    bool isPossible = true;
    switch (chosen.group) {
    case Group::Logic:
    case Group::Comparison:
        break;
    case Group::Bits:
        isPossible = canTakeBits(left) && canTakeBits(right);
        bound = 2 * std::max(left.bound, right.bound) + 1;
        break;
    case Group::Shift:
        isPossible = canTakeBits(left);
        right = {std::to_string(random.below(isBounded ? 16 : 64)), 63};
        bound = left.bound * 0x1p16;
        break;
    case Group::Sum:
        bound = left.bound + right.bound;
        isWhole = left.isWhole && right.isWhole;
        break;
    case Group::Product:
        bound = left.bound * right.bound;
        isWhole = left.isWhole && right.isWhole;
        break;
    case Group::Quotient:
        isPossible = isFloat || !isBounded;
        right = isPossible ? divisor(depth, false) : right;
        bound = left.bound;
        isWhole = !isFloat;
        break;
    case Group::Remainder:
        isPossible = canTakeBits(left);
        right = divisor(depth, true);
        bound = left.bound;
        break;
    }
    if (!isPossible)
        return left;
    return fit({within(left, chosen.precedence) + space() + chosen.symbol + space() +
                    within(right, chosen.precedence + 1),
                bound, isWhole, chosen.precedence});
}
