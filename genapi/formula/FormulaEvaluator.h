// SPDX-License-Identifier: MIT
// Runs the code of a formula. What numbers are and how they compute is the Arithmetic's matter, so that
// integer and float formulas share it.
#pragma once

#include "Formula.h"
#include "Number.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace GenApi_3_2_TVN {

/// \tparam Arithmetic  has Number, literal(Literal), unary(Operation, Number) and
///                     binary(Operation, Number, Number)
template <class Arithmetic>
class FormulaEvaluator
{
    using Number = typename Arithmetic::Number;
    using Load = std::function<Number(const VariableUse &)>;

public:
    FormulaEvaluator(const std::vector<Code> &codes, const std::vector<Literal> &literals,
                     const std::vector<VariableUse> &uses, const Load &load)
        : codes{codes}, literals{literals}, uses{uses}, load{load}, results(codes.size()), loaded(uses.size())
    {}

    /// Recursion goes from expression to expression only, which the parser bounds.
    Number evaluate(std::size_t codeNumber)
    {
        if (results[codeNumber])
            return *results[codeNumber];
        const Code &code = codes[codeNumber];
        std::vector<Number> stack;
        stack.reserve(usualDepth);
        for (std::size_t next = 0; next < code.size();)
            next = step(code[next], next, stack);
        results[codeNumber] = stack.back();
        return stack.back();
    }

    /// The variables that were loaded so far.
    std::vector<FormulaError::Operand> operands() const
    {
        std::vector<FormulaError::Operand> known;
        for (std::size_t use = 0; use < uses.size(); ++use)
            if (loaded[use])
                known.push_back({uses[use], GenApi_3_2_TVN::Number{*loaded[use]}.text()});
        return known;
    }

private:
    static constexpr std::size_t usualDepth = 8; ///< of the stack

    static Number take(std::vector<Number> &stack)
    {
        const Number top = stack.back();
        stack.pop_back();
        return top;
    }

    Number valueOf(std::size_t use)
    {
        if (!loaded[use])
            loaded[use] = load(uses[use]);
        return *loaded[use];
    }

    /// \return the place of the instruction that follows
    std::size_t step(const Instruction &instruction, std::size_t place, std::vector<Number> &stack)
    {
        switch (instruction.operation) {
        case Operation::Push:
            stack.push_back(Arithmetic::literal(literals[instruction.operand]));
            break;
        case Operation::Load:
            stack.push_back(valueOf(instruction.operand));
            break;
        case Operation::Evaluate:
            stack.push_back(evaluate(instruction.operand));
            break;
        case Operation::Truth:
            stack.push_back(take(stack) != 0 ? 1 : 0);
            break;
        case Operation::Jump:
            return instruction.operand;
        case Operation::JumpIfZero:
            return take(stack) == 0 ? instruction.operand : place + 1;
        case Operation::JumpIfFalse:
        case Operation::JumpIfTrue:
            return decide(instruction, place, stack);
        default:
            compute(instruction.operation, stack);
        }
        return place + 1;
    }

    std::size_t decide(const Instruction &instruction, std::size_t place, std::vector<Number> &stack)
    {
        const bool decidedBy = instruction.operation == Operation::JumpIfTrue;
        if ((take(stack) != 0) != decidedBy)
            return place + 1;
        stack.push_back(decidedBy ? 1 : 0);
        return instruction.operand;
    }

    void compute(Operation operation, std::vector<Number> &stack)
    {
        const Number right = take(stack);
        if (operation < Operation::RoundToDigits) {
            stack.push_back(Arithmetic::unary(operation, right));
            return;
        }
        const Number left = take(stack);
        stack.push_back(Arithmetic::binary(operation, left, right));
    }

    const std::vector<Code> &codes;
    const std::vector<Literal> &literals;
    const std::vector<VariableUse> &uses;
    const Load &load;
    std::vector<std::optional<Number>> results; ///< of each code, once it is known
    std::vector<std::optional<Number>> loaded;  ///< of each use, as well
};

} // namespace GenApi_3_2_TVN
