// SPDX-License-Identifier: MIT
// How integer formulas compute: in 64 bits with a sign, every case defined.
#pragma once

#include "Formula.h"

#include <cstdint>

namespace GenApi_3_2_TVN {

struct IntegerArithmetic
{
    using Number = std::int64_t;

    /// The operations that only fractions give a meaning are not for integers.
    static bool has(Operation operation);

    static Number literal(const Literal &literal) { return literal.integer.value_or(0); }
    static Number unary(Operation operation, Number value);
    /// \throws FormulaError  a division by zero, or a shift outside 0 to 63
    static Number binary(Operation operation, Number left, Number right);
};

} // namespace GenApi_3_2_TVN
