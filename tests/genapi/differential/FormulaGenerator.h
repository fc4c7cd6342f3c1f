// SPDX-License-Identifier: MIT
// Random formulas over the whole language, with as few parentheses as the precedences allow. Each knows a bound
// of its value, so that nothing overflows where the two sides would have to agree on more than arithmetic.
#pragma once

#include "Random.h"

#include <string>
#include <vector>

/// What can stand in a formula, and a part of one.
struct Term
{
    std::string text;
    double bound = 0;    ///< its value lies between minus this and this
    bool isWhole = true; ///< its value is an integer
    int precedence = 99; ///< of its outermost operator
};

enum class Arithmetic
{
    Integer, ///< 64 bits, which wrap: bounds don't matter
    Float,
    ExactInteger ///< integers that doubles can hold, and no division: where the oracle computes with doubles
};

class FormulaGenerator
{
public:
    /// \param areVariables  all of \p leaves, and this is no Expression: then ROUND can be used
    FormulaGenerator(Random &random, Arithmetic arithmetic, std::vector<Term> leaves, bool areVariables)
        : random{random},
          isFloat{arithmetic == Arithmetic::Float},
          isBounded{arithmetic != Arithmetic::Integer},
          leaves{std::move(leaves)},
          areVariables{areVariables}
    {}

    /// \param depth  operators within each other
    Term formula(int depth);

private:
    Term term(int depth);
    Term leaf();
    Term literal();
    Term unary(int depth);
    Term power();
    Term function(int depth);
    Term floatFunction(int depth);
    Term conditional(int depth);
    Term binary(int depth);
    Term chain();
    Term divisor(int depth, bool mustBeWhole);
    Term truth(int depth);
    Term fit(Term term);
    bool canTakeBits(const Term &term) const;
    std::string space();

    Random &random;
    bool isFloat;
    bool isBounded;
    std::vector<Term> leaves;
    bool areVariables;
};
