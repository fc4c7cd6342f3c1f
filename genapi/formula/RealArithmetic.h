// SPDX-License-Identifier: MIT
// How float formulas compute: in IEEE 754 doubles. What has no result there is infinity or no number, as in the
// values of nodes; operations on bits work on integers of 64 bits.
#pragma once

#include "Formula.h"

namespace GenApi_3_2_TVN {

struct RealArithmetic
{
    using Number = double;

    static Number literal(const Literal &literal) { return literal.real; }
    /// \throws FormulaError  an operand of an operation on bits does not fit into 64 bits
    static Number unary(Operation operation, Number value);
    /// \throws FormulaError  as for unary, a remainder of zero, or a shift outside 0 to 63
    static Number binary(Operation operation, Number left, Number right);
};

} // namespace GenApi_3_2_TVN
