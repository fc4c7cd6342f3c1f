// SPDX-License-Identifier: MIT
// Compiles formulas by recursive descent. The result is code for a stack, not a tree: a chain of ten thousand
// additions is flat there, and evaluating it needs no recursion.
#pragma once

#include "Formula.h"
#include "FormulaLexer.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace GenApi_3_2_TVN {

/// What stays the same while a formula and its expressions are compiled.
struct FormulaBuild
{
    struct Expression
    {
        std::uint32_t code;
        std::size_t depth; ///< it and those that it leads to, in a row
    };
    const FormulaSymbols &symbols;
    std::map<std::string, Expression, std::less<>> expressions{}; ///< those that are done
    std::map<std::string, std::size_t, std::less<>> constants{};  ///< to the numbers of their literals
    std::map<VariableUse, std::size_t> uses{};                    ///< to their numbers
    std::vector<std::string> openExpressions{};                   ///< those on the way, outermost first
    std::size_t totalLength = 0;
    std::size_t nesting = 0;
};

class FormulaParser
{
public:
    /// Compiles \p text into a new code of \p formula.
    FormulaParser(std::string_view text, FormulaBuild &build, Formula &formula);

    /// \return the number of the code
    /// \throws FormulaError
    std::uint32_t compile();

private:
    class Nesting;

    void parseConditional();
    void parseThen();
    void parseBinary(int lowestPrecedence);
    void parseLazy(Operation jump, int rightPrecedence);
    void parseUnary();
    void parsePower();
    void parsePrimary();
    void parseIdentifier();
    void parseFunction(const Token &name);
    void parseExpression(const std::string &name, const std::string &text);
    FormulaBuild::Expression compileExpression(const std::string &name, const std::string &text);
    void requireExpressionDepth(const std::string &name, std::size_t ownDepth) const;
    void parseVariable(const Token &identifier, std::size_t variable, std::string_view suffix);
    void pushConstant(const Token &place, const std::string &name, const std::string &text);
    std::size_t addLiteral(const Token &place, std::string_view text);

    std::size_t emit(Operation operation, std::size_t operand = 0);
    void landHere(std::size_t jump);
    bool isSymbol(std::string_view symbol) const;
    bool takeSymbol(std::string_view symbol);
    void expectSymbol(std::string_view symbol);
    [[noreturn]] void failAt(const Token &where, const std::string &fault) const;
    [[noreturn]] void failUnexpected() const;

    FormulaLexer lexer;
    FormulaBuild &build;
    Formula &formula;
    Code code;
    std::size_t depth = 1; ///< as FormulaBuild::Expression counts it
    Token current;
};

} // namespace GenApi_3_2_TVN
