// SPDX-License-Identifier: MIT
// One feature of a camera's remote node map: found by name, read or written through the GenApi interface of
// its kind, used at once and thrown away. It spares its users GenApi's pointer types.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace GenApi_3_2_TVN {
class INode;
}
namespace GenICam_Interfaces {
class GenTL_PortInterface;
}

/// What a node is by its NodeType. Category, register, enumeration and its entries are told apart from the
/// unknown ones but are served no better.
enum class NodeKind : std::int32_t
{
    NodeCategory = 0,
    NodeBoolean = 1,
    NodeInteger = 2,
    NodeFloat = 3,
    NodeString = 4,
    NodeRegister = 5,
    NodeEnumeration = 6,
    NodeEnumerationEntry = 7,
    NodeCommand = 8,
    NodeUnknown = 9,
};

/// Only what the members say is caught here. Reads and writes let GenApi's exceptions (GenericException, a
/// family of its own) and the port's (std::runtime_error) out to the caller.
class RemoteNode
{
public:
    /// The answer of valueAsInteger for a node without an integer value.
    static constexpr std::int64_t NoInteger = INT64_MIN;
    /// The answer of valueAsDouble for a node without a value: the smallest positive normal double.
    static constexpr double NoDouble = 2.2250738585072014e-308;

    /// An empty object over \p port, which it keeps alive. Null is allowed.
    explicit RemoteNode(std::shared_ptr<GenICam_Interfaces::GenTL_PortInterface> port);
    /// The same, and looks \p name up.
    RemoteNode(std::shared_ptr<GenICam_Interfaces::GenTL_PortInterface> port, const std::string &name);

    /// Takes another port; a node found in the old one is forgotten with it.
    void setPort(std::shared_ptr<GenICam_Interfaces::GenTL_PortInterface> port);

    /// Finds the feature \p name. A node map that fails is printed, and the object stays as it was; so it does
    /// without a port, with no word. A missing node is printed too; the object then has none.
    void lookup(const std::string &name);

    /// Integers, booleans as 0 and 1, floats cut toward zero; NoInteger for any other kind.
    std::int64_t valueAsInteger() const;
    /// Floats, integers, booleans as 0 and 1; NoDouble for any other kind.
    double valueAsDouble() const;
    /// Texts, integers in decimal, booleans as "0" and "1", floats with 6 decimals; empty for any other kind.
    std::string valueAsString() const;

    // A boolean becomes true by a value above 0, a text gets the value's decimal form. Other kinds are left
    // alone.
    void setValue(std::int32_t value);
    void setValue(std::int64_t value);
    void setValue(double value);

    /// Runs a command. A node that is none is printed; a failure of the command is dropped.
    void execute();

private:
    GenApi_3_2_TVN::INode *node = nullptr; // the node map's, which port keeps alive
    NodeKind nodeType = NodeKind::NodeUnknown;
    std::string featureName;
    std::shared_ptr<GenICam_Interfaces::GenTL_PortInterface> port;
};
