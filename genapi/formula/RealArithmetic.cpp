// SPDX-License-Identifier: MIT
// See the header.
#include "RealArithmetic.h"

#include "IntegerArithmetic.h"
#include "Number.h"

#include <cmath>

namespace GenApi_3_2_TVN {
namespace {

std::int64_t wholeBits(double value)
{
    if (const std::optional<std::int64_t> whole = wholeNumber(std::trunc(value)))
        return *whole;
    throw FormulaError{Number{value}.text() + " is no 64-bit integer"};
}

double onBits(Operation operation, double left, double right)
{
    return static_cast<double>(IntegerArithmetic::binary(operation, wholeBits(left), wholeBits(right)));
}

/// Behind the digits that a double has, every value is round already; before them, none is left.
double roundToDigits(double value, double digits)
{
    const double scale = std::pow(10.0, std::fabs(std::trunc(digits)));
    if (digits < 0)
        return std::isfinite(scale) ? std::round(value / scale) * scale : 0;
    const double scaled = value * scale;
    return std::isfinite(scaled) ? std::round(scaled) / scale : value;
}

double truth(bool isTrue)
{
    return isTrue ? 1 : 0;
}

} // namespace

double RealArithmetic::unary(Operation operation, double value)
{
    switch (operation) {
    case Operation::Negate:
        return -value;
    case Operation::Complement:
        return static_cast<double>(~wholeBits(value));
    case Operation::Not:
        return truth(value == 0);
    case Operation::Sign:
        return truth(value > 0) - truth(value < 0);
    case Operation::Absolute:
        return std::fabs(value);
    case Operation::Truncate:
        return std::trunc(value);
    case Operation::Floor:
        return std::floor(value);
    case Operation::Ceiling:
        return std::ceil(value);
    case Operation::Round:
        return std::round(value);
    case Operation::SquareRoot:
        return std::sqrt(value);
    case Operation::ArcSine:
        return std::asin(value);
    case Operation::ArcCosine:
        return std::acos(value);
    case Operation::ArcTangent:
        return std::atan(value);
    case Operation::Sine:
        return std::sin(value);
    case Operation::Cosine:
        return std::cos(value);
    case Operation::Tangent:
        return std::tan(value);
    case Operation::Exponential:
        return std::exp(value);
    case Operation::NaturalLogarithm:
        return std::log(value);
    default:
        return std::log10(value); // DecimalLogarithm
    }
}

double RealArithmetic::binary(Operation operation, double left, double right)
{
    switch (operation) {
    case Operation::RoundToDigits:
        return roundToDigits(left, right);
    case Operation::Power:
        return std::pow(left, right);
    case Operation::Multiply:
        return left * right;
    case Operation::Divide:
        return left / right;
    case Operation::Add:
        return left + right;
    case Operation::Subtract:
        return left - right;
    case Operation::Less:
        return truth(left < right);
    case Operation::Greater:
        return truth(left > right);
    case Operation::LessOrEqual:
        return truth(left <= right);
    case Operation::GreaterOrEqual:
        return truth(left >= right);
    case Operation::Equal:
        return truth(left == right);
    case Operation::NotEqual:
        return truth(left != right);
    default:
        return onBits(operation, left, right); // Remainder, shifts, BitAnd, BitXor, BitOr
    }
}

} // namespace GenApi_3_2_TVN
