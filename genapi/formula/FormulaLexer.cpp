// SPDX-License-Identifier: MIT
// See the header. Character classes are those of ASCII, whatever the locale of the process.
#include "FormulaLexer.h"

#include "ElementText.h"
#include "Number.h"

#include <array>

namespace GenApi_3_2_TVN {
namespace {

bool isDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

bool beginsIdentifier(char byte)
{
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || byte == '_';
}

bool isPartOfWord(char byte)
{
    return beginsIdentifier(byte) || isDigit(byte) || byte == '.';
}

std::size_t symbolLength(std::string_view text)
{
    constexpr std::array<std::string_view, 10> pairs{
        "**", "<<", ">>", "<=", ">=", "<>", "==", "!=", "&&", "||"};
    for (const std::string_view pair : pairs) {
        if (text.starts_with(pair))
            return 2;
    }
    return std::string_view{"()?:|&^=<>+-*/%~!,"}.find(text.front()) != std::string_view::npos ? 1 : 0;
}

} // namespace

Token FormulaLexer::next()
{
    while (position < text.size() &&
           std::string_view{" \t\r\n"}.find(text[position]) != std::string_view::npos)
        ++position;
    Token token{Token::Kind::End, {}, position + 1};
    if (position == text.size())
        return token;

    const std::string_view rest = text.substr(position);
    std::size_t length = 0;
    if (isDigit(rest.front()) || rest.front() == '.') {
        token.kind = Token::Kind::Number;
        length = numberLength();
    } else if (beginsIdentifier(rest.front())) {
        token.kind = Token::Kind::Identifier;
        while (length < rest.size() && isPartOfWord(rest[length]))
            ++length;
    } else {
        token.kind = Token::Kind::Symbol;
        length = symbolLength(rest);
    }
    if (length == 0)
        throw FormulaError{std::string{"unexpected '"} + rest.front() + "' at character " +
                           std::to_string(token.place)};
    token.text = rest.substr(0, length);
    position += length;
    return token;
}

/// Everything that can belong to the number, so that "12ab" is one faulty number and not two tokens.
std::size_t FormulaLexer::numberLength() const
{
    const std::string_view rest = text.substr(position);
    const bool hexadecimal = rest.starts_with("0x") || rest.starts_with("0X");
    std::size_t length = 0;
    while (length < rest.size()) {
        const bool isExponentSign = !hexadecimal && length > 0 &&
                                    (rest[length] == '+' || rest[length] == '-') &&
                                    (rest[length - 1] == 'e' || rest[length - 1] == 'E');
        if (!isPartOfWord(rest[length]) && !isExponentSign)
            break;
        ++length;
    }
    return length;
}

std::optional<Literal> parseLiteral(std::string_view text)
{
    const std::optional<double> real = parseReal(text);
    if (!real)
        return std::nullopt;
    const std::optional<std::int64_t> integer = parseInteger(text);
    return Literal{*real, integer ? integer : wholeNumber(*real)};
}

} // namespace GenApi_3_2_TVN
