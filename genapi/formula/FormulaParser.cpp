// SPDX-License-Identifier: MIT
// The grammar, lowest precedence first: ?: || && | ^ & equality order shift sum product sign power.
#include "FormulaParser.h"

#include "Limits.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <numbers>
#include <utility>

namespace GenApi_3_2_TVN {
namespace {

struct BinaryOperator
{
    std::string_view symbol;
    int precedence;
    Operation operation;
};

constexpr int orPrecedence = 1;
constexpr int andPrecedence = 2;

constexpr std::array<BinaryOperator, 20> binaryOperators{{
    {"||", orPrecedence, Operation::JumpIfTrue},
    {"&&", andPrecedence, Operation::JumpIfFalse},
    {"|", 3, Operation::BitOr},
    {"^", 4, Operation::BitXor},
    {"&", 5, Operation::BitAnd},
    {"=", 6, Operation::Equal},
    {"==", 6, Operation::Equal},
    {"<>", 6, Operation::NotEqual},
    {"!=", 6, Operation::NotEqual},
    {"<", 7, Operation::Less},
    {">", 7, Operation::Greater},
    {"<=", 7, Operation::LessOrEqual},
    {">=", 7, Operation::GreaterOrEqual},
    {"<<", 8, Operation::ShiftLeft},
    {">>", 8, Operation::ShiftRight},
    {"+", 9, Operation::Add},
    {"-", 9, Operation::Subtract},
    {"*", 10, Operation::Multiply},
    {"/", 10, Operation::Divide},
    {"%", 10, Operation::Remainder},
}};

constexpr std::array<std::pair<std::string_view, Operation>, 17> functions{{
    {"NEG", Operation::Negate},
    {"SGN", Operation::Sign},
    {"ABS", Operation::Absolute},
    {"TRUNC", Operation::Truncate},
    {"FLOOR", Operation::Floor},
    {"CEIL", Operation::Ceiling},
    {"ROUND", Operation::Round},
    {"SQRT", Operation::SquareRoot},
    {"ASIN", Operation::ArcSine},
    {"ACOS", Operation::ArcCosine},
    {"ATAN", Operation::ArcTangent},
    {"SIN", Operation::Sine},
    {"COS", Operation::Cosine},
    {"TAN", Operation::Tangent},
    {"EXP", Operation::Exponential},
    {"LN", Operation::NaturalLogarithm},
    {"LG", Operation::DecimalLogarithm},
}};

const BinaryOperator *binaryOperator(const Token &token)
{
    if (token.kind != Token::Kind::Symbol)
        return nullptr;
    for (const BinaryOperator &candidate : binaryOperators) {
        if (candidate.symbol == token.text)
            return &candidate;
    }
    return nullptr;
}

} // namespace

/// Counts the recursion in, and out again. All of it goes through an operand or the branch behind a "?".
class FormulaParser::Nesting
{
public:
    explicit Nesting(FormulaParser &parser) : parser{parser}
    {
        if (++parser.build.nesting > limits::formulaNesting)
            parser.failAt(parser.current, "nested deeper than " + std::to_string(limits::formulaNesting));
    }
    ~Nesting() { --parser.build.nesting; }
    Nesting(const Nesting &) = delete;
    Nesting &operator=(const Nesting &) = delete;

private:
    FormulaParser &parser;
};

FormulaParser::FormulaParser(std::string_view text, FormulaBuild &build, Formula &formula)
    : lexer{text}, build{build}, formula{formula}
{
    build.totalLength += text.size();
    if (text.size() > limits::formulaLength || build.totalLength > limits::formulaTotalLength)
        throw FormulaError{"longer than " + std::to_string(limits::formulaLength) + " characters, or than " +
                           std::to_string(limits::formulaTotalLength) + " with its expressions"};
}

std::uint32_t FormulaParser::compile()
{
    current = lexer.next();
    parseConditional();
    if (current.kind != Token::Kind::End)
        failUnexpected();
    formula.codes.push_back(std::move(code));
    return static_cast<std::uint32_t>(formula.codes.size() - 1);
}

/// The else branch is followed in a loop: descriptions list hundreds of cases by "?:" after "?:".
void FormulaParser::parseConditional()
{
    std::vector<std::size_t> ends;
    parseBinary(orPrecedence);
    while (takeSymbol("?")) {
        const std::size_t otherwise = emit(Operation::JumpIfZero);
        parseThen();
        expectSymbol(":");
        ends.push_back(emit(Operation::Jump));
        landHere(otherwise);
        parseBinary(orPrecedence);
    }
    for (const std::size_t end : ends)
        landHere(end);
}

void FormulaParser::parseThen()
{
    const Nesting nested{*this};
    parseConditional();
}

void FormulaParser::parseBinary(int lowestPrecedence)
{
    parseUnary();
    for (;;) {
        const BinaryOperator *const found = binaryOperator(current);
        if (found == nullptr || found->precedence < lowestPrecedence)
            return;
        current = lexer.next();
        if (found->precedence <= andPrecedence) {
            parseLazy(found->operation, found->precedence + 1);
            continue;
        }
        parseBinary(found->precedence + 1);
        emit(found->operation);
    }
}

void FormulaParser::parseLazy(Operation jump, int rightPrecedence)
{
    const std::size_t decided = emit(jump);
    parseBinary(rightPrecedence);
    emit(Operation::Truth);
    landHere(decided);
}

void FormulaParser::parseUnary()
{
    const Nesting nested{*this};
    if (takeSymbol("+"))
        return parseUnary();
    if (takeSymbol("-")) {
        parseUnary();
        emit(Operation::Negate);
        return;
    }
    if (takeSymbol("~")) {
        parseUnary();
        emit(Operation::Complement);
        return;
    }
    if (takeSymbol("!")) {
        parseUnary();
        emit(Operation::Not);
        return;
    }
    parsePower();
}

/// The exponent may carry a sign and is itself a power: 2**-1, and 2**3**2 is 2**9.
void FormulaParser::parsePower()
{
    parsePrimary();
    if (!takeSymbol("**"))
        return;
    parseUnary();
    emit(Operation::Power);
}

void FormulaParser::parsePrimary()
{
    if (takeSymbol("(")) {
        parseConditional();
        expectSymbol(")");
        return;
    }
    if (current.kind == Token::Kind::Identifier)
        return parseIdentifier();
    if (current.kind != Token::Kind::Number)
        failUnexpected();
    const Token number = std::exchange(current, lexer.next());
    emit(Operation::Push, addLiteral(number, number.text));
}

void FormulaParser::parseIdentifier()
{
    const Token identifier = std::exchange(current, lexer.next());
    const FormulaSymbols &symbols = build.symbols;
    const std::size_t dot = std::min(identifier.text.find('.'), identifier.text.size());
    const std::string_view base = identifier.text.substr(0, dot);
    const std::string_view suffix = identifier.text.substr(dot);

    // A variable may be declared with its suffix, as "Width.Max", or be given one where it is used.
    auto variable = symbols.variables.find(identifier.text);
    if (variable == symbols.variables.end())
        variable = symbols.variables.find(base);
    if (variable != symbols.variables.end())
        return parseVariable(identifier, variable->second, suffix);
    if (const auto constant = symbols.constants.find(identifier.text); constant != symbols.constants.end())
        return pushConstant(identifier, constant->first, constant->second);
    if (const auto found = symbols.expressions.find(identifier.text); found != symbols.expressions.end())
        return parseExpression(found->first, found->second);
    parseFunction(identifier);
}

void FormulaParser::parseVariable(const Token &identifier, std::size_t variable, std::string_view suffix)
{
    using Property = VariableUse::Property;
    VariableUse use{variable, Property::Value, {}};
    constexpr std::string_view entryPrefixes[] = {".Entry.", ".Enum."};
    const auto prefix = std::ranges::find_if(
        entryPrefixes, [suffix](std::string_view one) { return suffix.starts_with(one); });
    if (suffix == ".Min")
        use.property = Property::Min;
    else if (suffix == ".Max")
        use.property = Property::Max;
    else if (suffix == ".Inc")
        use.property = Property::Inc;
    else if (prefix != std::end(entryPrefixes)) {
        use.property = Property::Entry;
        use.entry = suffix.substr(prefix->size());
    } else if (!suffix.empty() && suffix != ".Value")
        failAt(identifier, "unknown suffix '" + std::string{suffix} + "'");
    const auto [known, isNew] = build.uses.emplace(use, formula.uses.size());
    if (isNew)
        formula.uses.push_back(std::move(use));
    emit(Operation::Load, known->second);
}

void FormulaParser::parseFunction(const Token &name)
{
    const bool isPi = name.text == "PI";
    if (isPi || name.text == "E") {
        if (takeSymbol("("))
            expectSymbol(")");
        formula.literals.push_back({isPi ? std::numbers::pi : std::numbers::e, std::nullopt});
        emit(Operation::Push, formula.literals.size() - 1);
        return;
    }
    for (const auto &[function, operation] : functions) {
        if (function != name.text)
            continue;
        expectSymbol("(");
        parseConditional();
        const bool hasDigits = operation == Operation::Round && takeSymbol(",");
        if (hasDigits)
            parseConditional();
        expectSymbol(")");
        emit(hasDigits ? Operation::RoundToDigits : operation);
        return;
    }
    failAt(name, "unknown name '" + std::string{name.text} + "'");
}

/// Each expression is compiled once and evaluated at most once, so those that use one another twice do not
/// double the work at each step.
void FormulaParser::parseExpression(const std::string &name, const std::string &text)
{
    const auto known = build.expressions.find(name);
    const FormulaBuild::Expression expression =
        known != build.expressions.end() ? known->second : compileExpression(name, text);
    requireExpressionDepth(name, expression.depth);
    depth = std::max(depth, expression.depth + 1);
    emit(Operation::Evaluate, expression.code);
}

FormulaBuild::Expression FormulaParser::compileExpression(const std::string &name, const std::string &text)
{
    std::string way;
    for (const std::string &open : build.openExpressions) {
        if (open == name || !way.empty())
            way += open + " > ";
    }
    if (!way.empty())
        throw FormulaError{"Expression '" + name + "' leads back to itself (" + way + name + ")"};
    requireExpressionDepth(name, 1);

    build.openExpressions.push_back(name);
    FormulaParser parser{text, build, formula};
    const std::uint32_t compiled = parser.compile();
    build.openExpressions.pop_back();
    return build.expressions.emplace(name, FormulaBuild::Expression{compiled, parser.depth}).first->second;
}

/// One that was compiled near the formula may be used again far from it, and takes what it evaluates along.
void FormulaParser::requireExpressionDepth(const std::string &name, std::size_t ownDepth) const
{
    if (build.openExpressions.size() + ownDepth > limits::expressionNesting)
        throw FormulaError{"Expression '" + name + "' reaches more than " +
                           std::to_string(limits::expressionNesting) + " expressions deep"};
}

/// The text of a constant may be long, so it is read once, however often it is used.
void FormulaParser::pushConstant(const Token &place, const std::string &name, const std::string &text)
{
    auto known = build.constants.find(name);
    if (known == build.constants.end())
        known = build.constants.emplace(name, addLiteral(place, text)).first;
    emit(Operation::Push, known->second);
}

/// \return its number
std::size_t FormulaParser::addLiteral(const Token &place, std::string_view text)
{
    const std::optional<Literal> literal = parseLiteral(text);
    if (!literal)
        failAt(place, "'" + std::string{text} + "' is not a number");
    formula.literals.push_back(*literal);
    return formula.literals.size() - 1;
}

std::size_t FormulaParser::emit(Operation operation, std::size_t operand)
{
    code.push_back({operation, static_cast<std::uint32_t>(operand)});
    return code.size() - 1;
}

void FormulaParser::landHere(std::size_t jump)
{
    code[jump].operand = static_cast<std::uint32_t>(code.size());
}

bool FormulaParser::isSymbol(std::string_view symbol) const
{
    return current.kind == Token::Kind::Symbol && current.text == symbol;
}

bool FormulaParser::takeSymbol(std::string_view symbol)
{
    if (!isSymbol(symbol))
        return false;
    current = lexer.next();
    return true;
}

void FormulaParser::expectSymbol(std::string_view symbol)
{
    if (takeSymbol(symbol))
        return;
    const std::string found =
        current.kind == Token::Kind::End ? "the end" : "'" + std::string{current.text} + "'";
    failAt(current, found + " where '" + std::string{symbol} + "' is expected");
}

void FormulaParser::failAt(const Token &where, const std::string &fault) const
{
    const std::string inside =
        build.openExpressions.empty() ? "" : " of Expression '" + build.openExpressions.back() + "'";
    throw FormulaError{fault + " at character " + std::to_string(where.place) + inside};
}

void FormulaParser::failUnexpected() const
{
    if (current.kind == Token::Kind::End)
        failAt(current, "ends where a value is expected");
    failAt(current, "unexpected '" + std::string{current.text} + "'");
}

} // namespace GenApi_3_2_TVN
