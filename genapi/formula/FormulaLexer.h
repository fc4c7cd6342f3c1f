// SPDX-License-Identifier: MIT
// Cuts a formula into tokens.
#pragma once

#include "Formula.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace GenApi_3_2_TVN {

struct Token
{
    enum class Kind
    {
        Number,
        Identifier, ///< with its suffixes: "Width.Max"
        Symbol,     ///< an operator or a parenthesis
        End
    };
    Kind kind = Kind::End;
    std::string_view text;
    std::size_t place = 0; ///< in characters from 1
};

class FormulaLexer
{
public:
    /// \p text must outlive the lexer.
    explicit FormulaLexer(std::string_view text) : text{text} {}

    /// \throws FormulaError  a character that begins no token
    Token next();

private:
    std::size_t numberLength() const;

    std::string_view text;
    std::size_t position = 0;
};

/// A number as formulas and constants write it; empty when \p text is none.
std::optional<Literal> parseLiteral(std::string_view text);

} // namespace GenApi_3_2_TVN
