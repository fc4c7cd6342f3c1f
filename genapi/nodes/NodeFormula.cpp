// SPDX-License-Identifier: MIT
// See the header.
#include "NodeFormula.h"

#include "ElementText.h"
#include "EnumerationNode.h"
#include "Limits.h"
#include "NodeMap.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <string>
#include <type_traits>
#include <utility>

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::OutOfRangeException;
using GenICam_3_2_TVN::PropertyException;

namespace {

/// Of the variable that comes with the call; the others are counted from 0.
constexpr std::size_t inputVariable = static_cast<std::size_t>(-1);

} // namespace

NodeFormula::NodeFormula(Node &owner, const char *tag, std::string_view inputName)
    : owner{owner}, tag{tag}, inputName{inputName}, text{owner.xml().child(tag)}
{
    if (!text)
        owner.fail<PropertyException>(std::string{"no "} + tag);
    for (const pugi::xml_node variable : owner.xml().children("pVariable"))
        pVariables.emplace_back(owner, "pVariable", variable);
}

FormulaSymbols NodeFormula::symbols() const
{
    FormulaSymbols known;
    std::size_t number = 0;
    for (const pugi::xml_node variable : owner.xml().children("pVariable"))
        known.variables.emplace(variable.attribute("Name").value(), number++);
    if (!inputName.empty())
        known.variables.insert_or_assign(std::string{inputName}, inputVariable);
    for (const pugi::xml_node constant : owner.xml().children("Constant"))
        known.constants.emplace(constant.attribute("Name").value(), textOf(constant));
    for (const pugi::xml_node expression : owner.xml().children("Expression"))
        known.expressions.emplace(expression.attribute("Name").value(), textOf(expression));
    return known;
}

const Formula &NodeFormula::compiled()
{
    if (formula)
        return *formula;
    try {
        Formula made{textOf(text), symbols()};
        if (std::string_view{owner.xml().name()}.starts_with("Int"))
            made.requireInteger();
        formula = std::move(made);
    } catch (const FormulaError &error) {
        owner.fail<PropertyException>(std::string{tag} + ": " +
                                      shortened(error.text, 4 * limits::shownNameLength));
    }
    return *formula;
}

template <class T>
T NodeFormula::run(Reading reading, T input)
{
    const Formula &ready = compiled();
    owner.map().trail().spend(ready.stepCount());
    const auto loadVariable = [&](const VariableUse &use) { return load<T>(use, reading, input); };
    return ready.evaluate(std::function<T(const VariableUse &)>{std::cref(loadVariable)});
}

template <class T>
T NodeFormula::evaluate(Reading reading, T input)
{
    try {
        return run(reading, input);
    } catch (const FormulaError &error) {
        owner.fail<OutOfRangeException>(std::string{tag} + ": " + error.text + valuesOf(error));
    }
}

std::string NodeFormula::valuesOf(const FormulaError &error) const
{
    std::string values;
    for (std::size_t place = 0; place < std::min(error.operands.size(), limits::shownItems); ++place) {
        const auto &[use, value] = error.operands[place];
        values += (place == 0 ? ", where " : ", ") + nameOf(use) + " is " + value;
    }
    return values + (error.operands.size() > limits::shownItems ? " ..." : "");
}

/// As the formula uses it.
std::string NodeFormula::nameOf(const VariableUse &use) const
{
    using Property = VariableUse::Property;
    if (use.variable == inputVariable)
        return std::string{inputName};
    std::string name = shown(declaredName(use.variable));
    switch (use.property) {
    case Property::Min:
        return name.ends_with(".Min") ? name : name + ".Min";
    case Property::Max:
        return name.ends_with(".Max") ? name : name + ".Max";
    case Property::Inc:
        return name.ends_with(".Inc") ? name : name + ".Inc";
    case Property::Entry:
        return isDeclaredWithEntry(use) ? name : name + ".Entry." + shown(use.entry);
    default:
        return name;
    }
}

std::string_view NodeFormula::declaredName(std::size_t variable) const
{
    const auto declared = owner.xml().children("pVariable");
    return std::next(declared.begin(), static_cast<std::ptrdiff_t>(variable))->attribute("Name").value();
}

/// Whether the entry stands in the name of the variable, and not only where the formula uses it.
bool NodeFormula::isDeclaredWithEntry(const VariableUse &use) const
{
    return use.property == VariableUse::Property::Entry &&
           declaredName(use.variable).ends_with("." + use.entry);
}

template <class T>
std::optional<T> NodeFormula::resultOf(T input)
{
    try {
        const T result = run(Reading{}, input);
        return std::isnan(static_cast<double>(result)) ? std::nullopt : std::optional{result};
    } catch (const FormulaError &) {
        return std::nullopt;
    }
}

template std::int64_t NodeFormula::evaluate(Reading, std::int64_t);
template double NodeFormula::evaluate(Reading, double);
template std::optional<std::int64_t> NodeFormula::resultOf(std::int64_t);
template std::optional<double> NodeFormula::resultOf(double);

template <class T>
T NodeFormula::load(const VariableUse &use, Reading reading, T input) const
{
    if (use.variable == inputVariable)
        return input;
    const Link &variable = pVariables[use.variable];
    const bool isValue = use.property == VariableUse::Property::Value;
    if constexpr (std::is_same_v<T, double>)
        return isValue ? variable.real(reading) : property(use, variable).real();
    else
        return isValue ? variable.integer(reading) : property(use, variable).floor();
}

Number NodeFormula::property(const VariableUse &use, const Link &variable) const
{
    if (use.property == VariableUse::Property::Min)
        return variable.minimum();
    if (use.property == VariableUse::Property::Max)
        return variable.maximum();
    if (use.property == VariableUse::Property::Entry)
        return entryValue(use, variable);
    if (const std::optional<Number> step = variable.increment())
        return *step;
    owner.fail<PropertyException>(std::string{tag} + ": '" + variable.node().name() + "' has no increment");
}

/// A variable that is declared with such a name, and is no enumeration, is what it is.
Number NodeFormula::entryValue(const VariableUse &use, const Link &variable) const
{
    EnumerationNode *const enumeration = variable.node().asEnumeration();
    if (enumeration == nullptr && isDeclaredWithEntry(use))
        return variable.number({});
    const std::string fault = std::string{tag} + ": '" + variable.node().name();
    if (enumeration == nullptr)
        owner.fail<PropertyException>(fault + "' is no enumeration, so it has no entry '" + shown(use.entry) +
                                      "'");
    Node *const found = enumeration->find(use.entry);
    if (found == nullptr)
        owner.fail<PropertyException>(fault + "' has no entry '" + shown(use.entry) + "'");
    return found->number("pVariable", {});
}

EAccessMode NodeFormula::accessMode(AccessQuestion question) const
{
    if (question.reasons == nullptr)
        return modeOfVariables(question);
    const std::string lock =
        question.reasons->lock; // variables are only read: theirs are no reason for anything
    const EAccessMode mode = modeOfVariables(question);
    question.reasons->lock = lock;
    return mode;
}

EAccessMode NodeFormula::modeOfVariables(AccessQuestion question) const
{
    for (const Link &variable : pVariables) {
        if (const EAccessMode mode = variable.accessMode(question); !isReadable(mode))
            return mode == NI ? NI : NA;
    }
    return RW;
}

void NodeFormula::check(Node &node)
{
    constexpr std::pair<const char *, std::string_view> formulas[] = {
        {"Formula", {}}, {"FormulaTo", "FROM"}, {"FormulaFrom", "TO"}};
    for (const auto &[tag, inputName] : formulas) {
        if (node.xml().child(tag))
            NodeFormula{node, tag, inputName}.compiled();
    }
}

} // namespace GenApi_3_2_TVN
