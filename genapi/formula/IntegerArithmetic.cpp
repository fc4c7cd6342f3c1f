// SPDX-License-Identifier: MIT
// See the header. Sums and products are made without a sign, where C++ defines the wrap.
#include "IntegerArithmetic.h"

#include <limits>

namespace GenApi_3_2_TVN {
namespace {

using Number = IntegerArithmetic::Number;

std::uint64_t bits(Number value)
{
    return static_cast<std::uint64_t>(value);
}

Number negate(Number value)
{
    return static_cast<Number>(0 - bits(value));
}

Number multiply(Number left, Number right)
{
    return static_cast<Number>(bits(left) * bits(right));
}

Number divide(Number left, Number right)
{
    if (right == 0)
        throw FormulaError{"division by zero"};
    return right == -1 ? negate(left) : left / right;
}

Number remainder(Number left, Number right)
{
    if (right == 0)
        throw FormulaError{"division by zero"};
    return right == -1 ? 0 : left % right;
}

Number shiftDistance(Number distance)
{
    if (distance < 0 || distance > 63)
        throw FormulaError{"shift by " + std::to_string(distance) + " bits"};
    return distance;
}

Number power(Number base, Number exponent)
{
    if (exponent < 0) {
        const bool isOdd = exponent % 2 != 0;
        if (base == 1 || base == -1)
            return isOdd ? base : 1;
        return divide(1, base) == 0 ? 0 : 1;
    }
    Number result = 1;
    for (; exponent > 0; exponent >>= 1) {
        if ((exponent & 1) != 0)
            result = multiply(result, base);
        base = multiply(base, base);
    }
    return result;
}

/// Whole numbers are round already, but for digits before the point: ROUND(1250, -2) is 1300.
Number roundToDigits(Number value, Number digits)
{
    constexpr Number digitsOf64Bits = 18;
    if (digits >= 0)
        return value;
    if (digits < -digitsOf64Bits)
        return 0;
    Number scale = 1;
    for (; digits < 0; ++digits)
        scale *= 10;
    const Number rest = value % scale;
    const Number half = scale / 2;
    const Number away = rest >= half ? 1 : rest <= -half ? -1 : 0;
    return multiply(value / scale + away, scale);
}

} // namespace

bool IntegerArithmetic::has(Operation operation)
{
    return operation < Operation::SquareRoot || operation > Operation::DecimalLogarithm;
}

Number IntegerArithmetic::unary(Operation operation, Number value)
{
    switch (operation) {
    case Operation::Negate:
        return negate(value);
    case Operation::Complement:
        return ~value;
    case Operation::Not:
        return value == 0 ? 1 : 0;
    case Operation::Sign:
        return (value > 0) - (value < 0);
    case Operation::Absolute:
        return value < 0 ? negate(value) : value;
    default:
        return value; // Truncate, Floor, Ceiling, Round: whole already
    }
}

Number IntegerArithmetic::binary(Operation operation, Number left, Number right)
{
    switch (operation) {
    case Operation::RoundToDigits:
        return roundToDigits(left, right);
    case Operation::Power:
        return power(left, right);
    case Operation::Multiply:
        return multiply(left, right);
    case Operation::Divide:
        return divide(left, right);
    case Operation::Remainder:
        return remainder(left, right);
    case Operation::Add:
        return static_cast<Number>(bits(left) + bits(right));
    case Operation::Subtract:
        return static_cast<Number>(bits(left) - bits(right));
    case Operation::ShiftLeft:
        return static_cast<Number>(bits(left) << shiftDistance(right));
    case Operation::ShiftRight:
        return left >> shiftDistance(right);
    case Operation::Less:
        return left < right ? 1 : 0;
    case Operation::Greater:
        return left > right ? 1 : 0;
    case Operation::LessOrEqual:
        return left <= right ? 1 : 0;
    case Operation::GreaterOrEqual:
        return left >= right ? 1 : 0;
    case Operation::Equal:
        return left == right ? 1 : 0;
    case Operation::NotEqual:
        return left != right ? 1 : 0;
    case Operation::BitAnd:
        return left & right;
    case Operation::BitXor:
        return left ^ right;
    default:
        return left | right; // BitOr
    }
}

} // namespace GenApi_3_2_TVN
