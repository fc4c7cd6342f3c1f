// SPDX-License-Identifier: MIT
// A formula of a description, compiled once and evaluated any number of times. It knows nothing of nodes:
// whoever evaluates it gives the values of its variables.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace GenApi_3_2_TVN {

/// What a formula's identifiers may mean.
struct FormulaSymbols
{
    std::map<std::string, std::size_t, std::less<>> variables; ///< to the number that a VariableUse answers
    std::map<std::string, std::string, std::less<>> constants;
    std::map<std::string, std::string, std::less<>> expressions;
};

/// A variable as a formula uses it, with its suffix.
struct VariableUse
{
    enum class Property
    {
        Value,
        Min,
        Max,
        Inc,
        Entry ///< the value of an entry of an enumeration
    };
    std::size_t variable;
    Property property = Property::Value;
    std::string entry; ///< behind ".Entry." or ".Enum."

    // NOLINTNEXTLINE(modernize-use-nullptr): it takes the comparison that the compiler writes for a null pointer
    auto operator<=>(const VariableUse &) const = default;
};

/// What is wrong with a formula, without the name of its node. Never leaves the layer: the node catches it.
struct FormulaError
{
    struct Operand
    {
        VariableUse use;
        std::string value;
    };

    std::string text;
    std::vector<Operand> operands = {}; ///< what an evaluation had asked for until it failed
};

/// A number as it is written: both of its readings, since an integer and a float formula compute differently.
struct Literal
{
    double real;
    std::optional<std::int64_t>
        integer; ///< empty when it has a fraction or passes 64 bits; else all its bits
};

enum class Operation : std::uint8_t
{
    Push,        ///< operand: number of the literal
    Load,        ///< operand: number of the variable's use
    Evaluate,    ///< operand: number of the code of an expression
    Jump,        ///< operand: target
    JumpIfZero,  ///< takes the condition away
    JumpIfFalse, ///< leaves 0 and jumps, or takes the condition away: the left side of &&
    JumpIfTrue,  ///< leaves 1 and jumps, or takes the condition away: the left side of ||
    Truth,       ///< 1 for anything but 0
    // Unary from here on.
    Negate,
    Complement,
    Not,
    Sign,
    Absolute,
    Truncate,
    Floor,
    Ceiling,
    Round,
    SquareRoot,
    ArcSine,
    ArcCosine,
    ArcTangent,
    Sine,
    Cosine,
    Tangent,
    Exponential,
    NaturalLogarithm,
    DecimalLogarithm,
    // Binary from here on.
    RoundToDigits,
    Power,
    Multiply,
    Divide,
    Remainder,
    Add,
    Subtract,
    ShiftLeft,
    ShiftRight,
    Less,
    Greater,
    LessOrEqual,
    GreaterOrEqual,
    Equal,
    NotEqual,
    BitAnd,
    BitXor,
    BitOr
};

struct Instruction
{
    Operation operation;
    std::uint32_t operand = 0;
};

/// For a stack of values: each instruction takes its operands from the top and leaves its result there. Jumps
/// lead forward only, so an evaluation ends.
using Code = std::vector<Instruction>;

class Formula
{
public:
    /// Compiles \p text and the expressions that it leads to.
    /// \throws FormulaError  with the place, counted in characters from 1
    Formula(std::string_view text, const FormulaSymbols &symbols);

    /// \throws FormulaError  it needs fractions, which integer nodes don't have
    void requireInteger() const;

    /// An upper limit of the instructions that one evaluation takes.
    std::size_t stepCount() const;

    /// 64-bit signed arithmetic: sums, differences, products and powers wrap as two's complement does, "/"
    /// cuts toward zero, and the lowest number divided by -1 is itself. Only the branch taken is evaluated,
    /// and each expression at most once.
    /// \param load  gives the value of a variable, and is asked once for all equal uses, so that they have one
    ///              value also when a device answers otherwise each time; its exceptions pass through
    /// \throws FormulaError  a division by zero, or a shift outside 0 to 63
    std::int64_t evaluate(const std::function<std::int64_t(const VariableUse &)> &load) const;

    /// IEEE 754 doubles, where "/" is the division of fractions, and division by zero gives infinity or no number.
    /// "%", "~", shifts and operators on bits work on the operands cut to 64-bit integers. Else as above.
    /// \throws FormulaError  an operand that has to be an integer is none, a remainder of zero, or a shift outside
    ///         0 to 63
    double evaluate(const std::function<double(const VariableUse &)> &load) const;

private:
    friend class FormulaParser;

    template <class Arithmetic>
    typename Arithmetic::Number
    run(const std::function<typename Arithmetic::Number(const VariableUse &)> &load) const;

    std::vector<Code> codes; ///< the formula's own and those of its expressions
    std::size_t mainCode = 0;
    std::vector<Literal> literals;
    std::vector<VariableUse> uses; ///< each one once
};

} // namespace GenApi_3_2_TVN
