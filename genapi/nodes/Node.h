// SPDX-License-Identifier: MIT
// What all kinds of nodes share: the element of the description, the conditions of access, and the inner road
// by which nodes ask one another. Calls from outside come by the interfaces of the kinds, check the access
// mode, and then take the same road.
#pragma once

#include "INode.h"
#include "Link.h"
#include "Number.h"
#include "Raise.h"
#include "Trail.h"

#include <pugixml.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace GenApi_3_2_TVN {

class EnumerationNode;
class NodeMap;

/// How a value is read.
struct Reading
{
    bool ignoreCache = false; ///< ask the device also for what is cached
};

/// How an access mode is found.
struct AccessQuestion
{
    /// Ask the port too. Reads and writes don't: the port itself refuses what it does not allow.
    bool includePort = true;
    /// Receives what has narrowed the mode, for a message; may be null.
    struct AccessReasons *reasons = nullptr;
};

/// Conditions of the description that take access away, of each kind the last that was met.
struct AccessReasons
{
    std::string absence; ///< why it is not implemented: "since 'Option' is 0"
    std::string pause;   ///< why it is not available at present, likewise
    std::string lock;    ///< "by 'Lock', which is 1"
};

class Node : public INode
{
public:
    Node(NodeMap &nodeMap, pugi::xml_node element);

    GenICam_3_2_TVN::gcstring GetName() const override;
    bool GetProperty(const GenICam_3_2_TVN::gcstring &name, GenICam_3_2_TVN::gcstring &value,
                     GenICam_3_2_TVN::gcstring &attribute) const override;
    void InvalidateNode() override;
    EAccessMode GetAccessMode() const override;

    // The inner road. \p by is the child of the asking node that leads here, a literal; empty from outside.
    Number number(const char *by, Reading reading);
    void setNumber(const char *by, Number value);
    Number minimum(const char *by);
    Number maximum(const char *by);
    /// Empty when values have no common step.
    std::optional<Number> increment(const char *by);
    std::string text(const char *by, Reading reading);
    void setText(const char *by, const std::string &value);
    std::int64_t maximumLength(const char *by);
    EAccessMode accessMode(const char *by, AccessQuestion question) const;

    /// Its own entries, where it is an enumeration; else null.
    virtual EnumerationNode *asEnumeration() { return nullptr; }

    /// For messages: a name longer than limits::shownNameLength without its end.
    std::string name() const;
    bool isAsked(Aspect aspect) const { return (askedAspects & static_cast<std::uint8_t>(aspect)) != 0; }
    void setAsked(Aspect aspect, bool isAskedNow) const
    {
        const auto bit = static_cast<std::uint8_t>(aspect);
        askedAspects = static_cast<std::uint8_t>(isAskedNow ? askedAspects | bit : askedAspects & ~bit);
    }

    NodeMap &map() const { return nodeMap; }
    pugi::xml_node xml() const { return element; }
    /// The first child \p tag. What an entry of a StructReg does not state, its StructReg does.
    pugi::xml_node child(const char *tag) const;
    /// The children that tell where a register lies: of an entry of a StructReg, they stand in its StructReg.
    /// \throws PropertyException  a StructReg has more to share than the limits allow
    std::vector<pugi::xml_node> placeChildren() const;

    /// \throws Exception  with the name of this node before \p fault, and how the call from outside has led here
    template <class Exception>
    [[noreturn]] void fail(const std::string &fault, unsigned line = __builtin_LINE()) const
    {
        raise<Exception>("GenApi/Node", told(fault), line);
    }

    // Children, as nodes read them.
    std::optional<std::string> childText(const char *tag) const;
    std::optional<std::int64_t> childInteger(const char *tag) const;
    /// Whether the child \p tag says \p yes rather than \p no, which it also means when it is missing.
    /// \throws PropertyException  it says neither
    bool childSays(const char *tag, std::string_view yes, std::string_view no) const;
    /// \tparam T  std::int64_t or double
    /// \throws PropertyException  the text of \p child is no such number
    template <class T>
    T numberOf(pugi::xml_node child) const;
    /// \throws PropertyException  the attribute of \p child is missing or no integer
    std::int64_t attributeOf(pugi::xml_node child, const char *name) const;

    /// \throws AccessException  not readable, or not writable, at present; the text says which condition forbids it
    void requireReadable() const;
    void requireWritable() const;

    /// \p value as messages show it, with the unit that the description gives the node or the feature whose value it is.
    std::string withUnit(Number value) const;
    /// \throws OutOfRangeException  \p value, with the limits in force
    [[noreturn]] void refuseOutside(Number value, Number lowest, Number highest) const;

    /// \p value to the nearest integer, as nodes with an integer value take a float.
    /// \throws OutOfRangeException  64 bits do not hold it
    std::int64_t wholeOf(Number value) const;

protected:
    // What a kind answers for itself. Where it has no such thing, the base refuses and names the kind.
    virtual Number readNumber(Reading reading);
    virtual void writeNumber(Number value);
    virtual Number readMinimum();
    virtual Number readMaximum();
    virtual std::optional<Number> readIncrement();
    virtual std::string readText(Reading reading);
    virtual void writeText(const std::string &value);
    virtual std::int64_t readMaximumLength();
    /// Of the kind and of what it refers to, without the conditions of the description.
    virtual EAccessMode ownAccessMode(AccessQuestion question) const;
    /// Whether the layer evaluates this kind at all.
    virtual bool isEvaluated() const { return true; }

private:
    std::string told(const std::string &fault) const;
    std::string unit() const;
    [[noreturn]] void refuseUse(const char *fault) const;
    [[noreturn]] void refuseAccess(bool isWrite) const;
    static std::string reasonOf(const Link &condition, const char *before, const char *between);
    /// The name of the node, of parts that are each made by \p part of a name in the description.
    std::string composeName(std::string (*part)(const char *)) const;
    const std::vector<pugi::xml_node> &sharedChildren() const;
    EAccessMode conditionalAccessMode(AccessQuestion question) const;

    NodeMap &nodeMap;
    pugi::xml_node element;
    pugi::xml_node structReg; ///< around an entry of one; null for every other node
    std::optional<Link> pIsImplemented;
    std::optional<Link> pIsAvailable;
    std::optional<Link> pIsLocked;
    EAccessMode imposedAccessMode = RW;
    mutable std::uint8_t askedAspects = 0; ///< asking changes nothing that shows
};

template <>
std::int64_t Node::numberOf(pugi::xml_node child) const;
template <>
double Node::numberOf(pugi::xml_node child) const;

/// The mode that allows only what both allow.
EAccessMode narrower(EAccessMode left, EAccessMode right);
constexpr bool isReadable(EAccessMode mode)
{
    return mode == RO || mode == RW;
}
constexpr bool isWritable(EAccessMode mode)
{
    return mode == WO || mode == RW;
}

/// The mode that the child \p tag of a node states, or \p otherwise.
/// \throws PropertyException  it is none of RO, WO and RW
EAccessMode childAccessMode(const Node &node, const char *tag, EAccessMode otherwise);

} // namespace GenApi_3_2_TVN
