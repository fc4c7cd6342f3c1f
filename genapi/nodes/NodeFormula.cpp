// SPDX-License-Identifier: MIT
// See the header.
#include "NodeFormula.h"

#include "ElementText.h"

#include <functional>
#include <string>
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
        owner.fail<PropertyException>(std::string{tag} + ": " + error.text);
    }
    return *formula;
}

std::int64_t NodeFormula::evaluateInteger(Reading reading, std::int64_t input)
{
    const Formula &ready = compiled();
    const auto loadVariable = [&](const VariableUse &use) { return load(use, reading, input); };
    try {
        return ready.evaluateInteger(std::cref(loadVariable));
    } catch (const FormulaError &error) {
        owner.fail<OutOfRangeException>(std::string{tag} + ": " + error.text);
    }
}

std::int64_t NodeFormula::load(const VariableUse &use, Reading reading, std::int64_t input) const
{
    if (use.variable == inputVariable)
        return input;
    const Link &variable = pVariables[use.variable];
    switch (use.property) {
    case VariableUse::Property::Min:
        return variable.node().minimum("pVariable");
    case VariableUse::Property::Max:
        return variable.node().maximum("pVariable");
    case VariableUse::Property::Inc:
        return variable.node().increment("pVariable");
    case VariableUse::Property::Enum:
        owner.fail<PropertyException>(std::string{tag} + ": the entry '" + use.entry +
                                      "' of an enumeration is not evaluated in this version");
    default:
        return variable.integer(reading);
    }
}

EAccessMode NodeFormula::accessMode(AccessQuestion question) const
{
    EAccessMode mode = RW;
    for (const Link &variable : pVariables)
        mode = narrower(mode, variable.node().accessMode("pVariable", question));
    return mode;
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
