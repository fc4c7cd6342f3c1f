// SPDX-License-Identifier: MIT
#include "RemoteNode.h"

#include "CPointer.h"
#include "ConsoleIO.h"
#include "GenTL_PortInterface.h"
#include "GenericException.h"
#include "IBoolean.h"
#include "ICommand.h"
#include "IFloat.h"
#include "IInteger.h"
#include "INode.h"
#include "IString.h"
#include "gcstring.h"

#include <limits>
#include <utility>

using namespace GenApi_3_2_TVN;
using GenICam_3_2_TVN::gcstring;
using GenICam_3_2_TVN::GenericException;
using GenICam_Interfaces::GenTL_PortInterface;

namespace {

NodeKind kindOf(const gcstring &nodeType)
{
    // In this order; the first match wins.
    static constexpr std::pair<const char *, NodeKind> kinds[] = {
        {"Category", NodeKind::NodeCategory},
        {"Boolean", NodeKind::NodeBoolean},
        {"Integer", NodeKind::NodeInteger},
        {"Float", NodeKind::NodeFloat},
        {"String", NodeKind::NodeString},
        {"StringReg", NodeKind::NodeString},
        {"Register", NodeKind::NodeRegister},
        {"Enumeration", NodeKind::NodeEnumeration},
        {"EnumerationEntry", NodeKind::NodeEnumerationEntry},
        {"Command", NodeKind::NodeCommand},
    };
    for (const auto &[text, kind] : kinds) {
        if (nodeType == text)
            return kind;
    }
    return NodeKind::NodeUnknown;
}

constexpr double TwoTo63 = 9223372036854775808.0;

// Cut toward zero; what does not fit becomes the nearest value that does, and not-a-number becomes 0.
std::int64_t toInteger(double value)
{
    if (value != value)
        return 0;
    if (value >= TwoTo63)
        return std::numeric_limits<std::int64_t>::max();
    if (value < -TwoTo63)
        return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(value);
}

// As by way of an unsigned number: values from 2^63 on keep their bits. Negative ones go the signed way.
std::int64_t toIntegerBits(double value)
{
    if (value < TwoTo63)
        return toInteger(value);
    if (value >= 2 * TwoTo63)
        return -1; // all bits set, the highest unsigned value
    return value != value ? 0 : static_cast<std::int64_t>(static_cast<std::uint64_t>(value));
}

template <class Value>
void writeValue(INode *node, NodeKind kind, Value value, std::int64_t integerValue)
{
    switch (kind) {
    case NodeKind::NodeBoolean:
        CBooleanPtr(node)->SetValue(value > 0, true);
        break;
    case NodeKind::NodeInteger:
        CIntegerPtr(node)->SetValue(integerValue, true);
        break;
    case NodeKind::NodeFloat:
        CFloatPtr(node)->SetValue(static_cast<double>(value), true);
        break;
    case NodeKind::NodeString:
        CStringPtr(node)->SetValue(gcstring(std::to_string(value).c_str()), true);
        break;
    default:
        break;
    }
}

} // namespace

RemoteNode::RemoteNode(std::shared_ptr<GenTL_PortInterface> port) : port(std::move(port)) {}

RemoteNode::RemoteNode(std::shared_ptr<GenTL_PortInterface> port, const std::string &name)
    : RemoteNode(std::move(port))
{
    lookup(name);
}

void RemoteNode::setPort(std::shared_ptr<GenTL_PortInterface> newPort)
{
    // The node is the old port's, which may go with this share.
    node = nullptr;
    nodeType = NodeKind::NodeUnknown;
    port = std::move(newPort);
}

void RemoteNode::lookup(const std::string &name)
{
    if (!port)
        return;
    INode *found = nullptr;
    try {
        found = port->getNode(name);
    } catch (const GenericException &failure) {
        console::printLine("WARNING: Getting the remote device node '", name, "' failed!");
        console::printLine("         Msg: ", failure.GetDescription());
        return;
    }
    node = found;
    if (!node) {
        console::printLine("ERROR: Could not open the remote device node '", name, "'!");
        return;
    }
    featureName = name;
    gcstring value;
    gcstring attribute;
    node->GetProperty("NodeType", value, attribute);
    nodeType = kindOf(value);
}

std::int64_t RemoteNode::valueAsInteger() const
{
    switch (nodeType) {
    case NodeKind::NodeBoolean:
        return CBooleanPtr(node)->GetValue(false, false) ? 1 : 0;
    case NodeKind::NodeInteger:
        return CIntegerPtr(node)->GetValue(false, false);
    case NodeKind::NodeFloat:
        return toInteger(CFloatPtr(node)->GetValue(false, false));
    default:
        return NoInteger;
    }
}

double RemoteNode::valueAsDouble() const
{
    switch (nodeType) {
    case NodeKind::NodeBoolean:
        return CBooleanPtr(node)->GetValue(false, false) ? 1.0 : 0.0;
    case NodeKind::NodeInteger:
        return static_cast<double>(CIntegerPtr(node)->GetValue(false, false));
    case NodeKind::NodeFloat:
        return CFloatPtr(node)->GetValue(false, false);
    default:
        return NoDouble;
    }
}

std::string RemoteNode::valueAsString() const
{
    switch (nodeType) {
    case NodeKind::NodeBoolean:
    case NodeKind::NodeInteger:
        return std::to_string(valueAsInteger());
    case NodeKind::NodeFloat:
        return std::to_string(valueAsDouble());
    case NodeKind::NodeString:
        return CStringPtr(node)->GetValue(false, false).c_str();
    default:
        return {};
    }
}

void RemoteNode::setValue(std::int32_t value)
{
    writeValue(node, nodeType, value, value);
}

void RemoteNode::setValue(std::int64_t value)
{
    writeValue(node, nodeType, value, value);
}

void RemoteNode::setValue(double value)
{
    writeValue(node, nodeType, value, toIntegerBits(value));
}

void RemoteNode::execute()
{
    if (nodeType != NodeKind::NodeCommand) {
        console::printLine("Cannot execute feature ", featureName, " because it is not a command!");
        return;
    }
    try {
        CCommandPtr(node)->Execute(true);
    } catch (...) {
        // Dropped for good: the caller cannot tell that the command failed.
    }
}
