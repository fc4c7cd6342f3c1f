// SPDX-License-Identifier: MIT
// A formula within a node: its text, the nodes behind its variables, and the name of the node in its errors.
#pragma once

#include "Formula.h"
#include "Link.h"
#include "Node.h"

#include <pugixml.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace GenApi_3_2_TVN {

class NodeFormula
{
public:
    /// \param owner      the node whose children pVariable, Constant and Expression the formula uses
    /// \param tag        the child with the formula, a literal
    /// \param inputName  a variable whose value comes with the call, such as "FROM"; empty for none
    /// \throws PropertyException  the child is missing
    NodeFormula(Node &owner, const char *tag, std::string_view inputName = {});

    /// Compiles at the first call.
    /// \tparam T  std::int64_t or double: the rules by which it computes
    /// \throws PropertyException  the formula is faulty; OutOfRangeException  it divides by zero and the like
    template <class T>
    T evaluate(Reading reading, T input = 0);

    /// As evaluate(), for the end of a range. Empty where the formula has no result.
    template <class T>
    std::optional<T> resultOf(T input);

    /// RW when all variables can be read.
    EAccessMode accessMode(AccessQuestion question) const;

    /// Compiles every formula of \p node, whatever its kind.
    /// \throws PropertyException  one is faulty
    static void check(Node &node);

private:
    EAccessMode modeOfVariables(AccessQuestion question) const;
    const Formula &compiled();
    FormulaSymbols symbols() const;
    template <class T>
    T run(Reading reading, T input);
    template <class T>
    T load(const VariableUse &use, Reading reading, T input) const;
    Number property(const VariableUse &use, const Link &variable) const;
    Number entryValue(const VariableUse &use, const Link &variable) const;
    std::string valuesOf(const FormulaError &error) const;
    std::string nameOf(const VariableUse &use) const;
    std::string_view declaredName(std::size_t variable) const;
    bool isDeclaredWithEntry(const VariableUse &use) const;

    Node &owner;
    const char *tag;
    std::string_view inputName;
    pugi::xml_node text;
    std::vector<Link> pVariables;
    std::optional<Formula> formula;
};

} // namespace GenApi_3_2_TVN
