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

/// The operators between two operands, and the precedence of each.
constexpr std::array<std::string_view, 18> symbols{"||", "&&", "|",  "^",  "&", "=", "<>", "<", ">",
                                                   "<=", ">=", "<<", ">>", "+", "-", "*",  "/", "%"};
constexpr std::array<int, 18> precedences{1, 2, 3, 4, 5, 6, 6, 7, 7, 7, 7, 8, 8, 9, 9, 10, 10, 10};

std::string within(const Term &term, int precedence)
{
    return term.precedence < precedence ? "(" + term.text + ")" : term.text;
}

class FormulaGenerator
{
public:
    FormulaGenerator(Random &random, Arithmetic arithmetic, const std::vector<Term> &leaves,
                     bool areVariables)
        : random{random},
          isFloat{arithmetic == Arithmetic::Float},
          isBounded{arithmetic != Arithmetic::Integer},
          leaves{leaves},
          areVariables{areVariables}
    {}

    /// ROUND comes first if at all: behind parentheses the oracle does not take it.
    Term formula(int depth)
    {
        const Term rest = term(depth);
        if (!isFloat || !areVariables || random.chance(75))
            return rest;
        const Term rounded = leaf();
        const std::string digits =
            random.chance(50) ? spaced(",") + std::to_string(rounded.text.size() % 4) : "";
        return {"ROUND(" + rounded.text + digits + ")" + spaced("+") + within(rest, 10),
                rest.bound + rounded.bound + 1, false, 9};
    }

private:
    Term fit(const Term &term) { return !isBounded || term.bound <= exactWhole ? term : literal(); }
    bool canTakeBits(const Term &term) const
    {
        return !isBounded || (term.isWhole && term.bound <= bitsLimit);
    }

    Term term(int depth)
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
    Term chain()
    {
        std::string text = leaf().text;
        bool isDistance = false;
        for (std::size_t length = 3 + random.below(5); length > 0;) {
            const std::size_t chosen = random.below(symbols.size());
            const std::string_view symbol = symbols[chosen];
            const int precedence = precedences[chosen];
            if (isDistance && precedence > 7) // it would reckon on with the distance of a shift
                continue;
            isDistance = precedence == 8;
            const bool isDivision = symbol == "/" || symbol == "%";
            constexpr std::array<const char *, 6> signs{"", "", "", "", "-", "~"};
            constexpr std::array<const char *, 7> distances{"1", "13", "62", "3+2", "4*5", "9-4", "~-4"};
            const std::string sign = random.pick(signs);
            const std::string operand = isDistance   ? random.pick(distances)
                                        : isDivision ? std::to_string(1 + random.below(62))
                                                     : sign + leaf().text;
            text += spaced(symbol) + operand;
            --length;
        }
        return {text, 0, true, conditionalPrecedence + 1};
    }

    Term leaf()
    {
        if (!leaves.empty() && random.chance(75))
            return random.pick(leaves);
        return literal();
    }

    /// Fractions are those that the oracle reads exactly.
    Term literal()
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

    std::string spaced(std::string_view symbol)
    {
        constexpr std::array<const char *, 4> before{"", " ", "", " "};
        constexpr std::array<const char *, 4> behind{"", "", " ", " "};
        const std::size_t kind = random.below(4);
        return before[kind] + std::string{symbol} + behind[kind];
    }

    Term unary(int depth)
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
    Term power()
    {
        constexpr std::array<const char *, 5> exponents{"0", "1", "2", "3", "2**1"};
        const std::string exponent = random.pick(exponents);
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
        if (isFloat && random.chance(80))
            return floatFunction(depth);
        const Term inner = term(depth);
        return random.chance(50) ? Term{"SGN(" + inner.text + ")", 1, true}
                                 : Term{"NEG(" + inner.text + ")", inner.bound, inner.isWhole};
    }

    /// Of arguments that they are defined for.
    Term floatFunction(int depth)
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

    Term binary(int depth)
    {
        const std::size_t chosen = random.below(symbols.size());
        const std::string_view symbol = symbols[chosen];
        const int precedence = precedences[chosen];
        const bool isLogic = precedence <= 2;
        const Term left = isLogic ? truth(depth) : term(depth);
        Term right = isLogic ? truth(depth) : term(depth);
        const bool areWhole = left.isWhole && right.isWhole;
        const bool isDivision = symbol == "/" || symbol == "%";
        if (isDivision && !isBounded)
            right = {"(" + within(right, 6) + " & 255 | 1)", 255}; // never zero and never negative
        else if (isDivision && !right.isWhole)
            right = {"(ABS(" + right.text + ")+1)", right.bound + 1, false};
        else if (isDivision || precedence == 8)
            right = {std::to_string(1 + random.below(isBounded ? 15 : 62)), 62};
        const auto joined = [&](double bound, bool isWhole) {
            return fit({within(left, precedence) + spaced(symbol) + within(right, precedence + 1), bound,
                        isWhole, precedence});
        };
        if (isLogic || precedence == 6 || precedence == 7)
            return joined(1, true);
        if (precedence == 9)
            return joined(left.bound + right.bound, areWhole);
        if (symbol == "*")
            return joined(left.bound * right.bound, areWhole);
        if (symbol == "/")
            return isFloat || !isBounded ? joined(left.bound, !isFloat) : left;
        if (!canTakeBits(left) || !canTakeBits(right))
            return left;
        if (precedence == 8)
            return joined(left.bound * 0x1p15, true);
        return joined(2 * std::max(left.bound, right.bound) + 1, true);
    }

    Random &random;
    bool isFloat;
    bool isBounded;
    const std::vector<Term> &leaves;
    bool areVariables;
};

} // namespace

Term randomFormula(Random &random, Arithmetic arithmetic, const std::vector<Term> &leaves, bool areVariables,
                   int depth)
{
    return FormulaGenerator{random, arithmetic, leaves, areVariables}.formula(depth);
}
