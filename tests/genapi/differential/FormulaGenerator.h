// SPDX-License-Identifier: MIT
// Random formulas over the whole language but ROUND, with as few parentheses as the precedences allow. Each knows a bound
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
    Float
};

/// Never with ROUND, which the oracle takes at the begin of a formula alone.
/// \param depth  operators within each other
Term randomTerm(Random &random, Arithmetic arithmetic, const std::vector<Term> &leaves, int depth);
