// SPDX-License-Identifier: MIT
// What all kinds of nodes share: the element of the description, the conditions of access, and the inner road
// by which nodes ask one another. Calls from outside come by the interfaces of the kinds, check the access
// mode, and then take the same road.
#pragma once

#include "INode.h"
#include "Link.h"
#include "Raise.h"
#include "Trail.h"

#include <pugixml.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace GenApi_3_2_TVN {

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
    std::int64_t integer(const char *by, Reading reading);
    void setInteger(const char *by, std::int64_t value);
    std::int64_t minimum(const char *by);
    std::int64_t maximum(const char *by);
    std::int64_t increment(const char *by);
    std::string text(const char *by, Reading reading);
    void setText(const char *by, const std::string &value);
    std::int64_t maximumLength(const char *by);
    EAccessMode accessMode(const char *by, AccessQuestion question) const;

    /// For messages and for the trail.
    std::string name() const;
    bool isAsked(Aspect aspect) const { return (askedAspects & static_cast<std::uint8_t>(aspect)) != 0; }
    void setAsked(Aspect aspect, bool isAskedNow) const;

    NodeMap &map() const { return nodeMap; }
    pugi::xml_node xml() const { return element; }

    /// \throws Exception  with the name of this node before \p fault
    template <class Exception>
    [[noreturn]] void fail(const std::string &fault, unsigned line = __builtin_LINE()) const
    {
        raise<Exception>("GenApi/Node", "Node '" + name() + "': " + fault, line);
    }

    // Children, as nodes read them.
    std::optional<std::string> childText(const char *tag) const;
    std::optional<std::int64_t> childInteger(const char *tag) const;
    /// \throws PropertyException  the text of an element that must be an integer isn't one
    std::int64_t integerOf(pugi::xml_node child) const;

protected:
    /// \throws AccessException  not readable, or not writable, at present
    void requireReadable() const;
    void requireWritable() const;

    // What a kind answers for itself. Where it has no such thing, the base refuses and names the kind.
    virtual std::int64_t readInteger(Reading reading);
    virtual void writeInteger(std::int64_t value);
    virtual std::int64_t readMinimum();
    virtual std::int64_t readMaximum();
    virtual std::int64_t readIncrement();
    virtual std::string readText(Reading reading);
    virtual void writeText(const std::string &value);
    virtual std::int64_t readMaximumLength();
    /// Of the kind and of what it refers to, without the conditions of the description.
    virtual EAccessMode ownAccessMode(AccessQuestion question) const;
    /// Whether the layer evaluates this kind at all.
    virtual bool isEvaluated() const { return true; }

private:
    [[noreturn]] void refuseNoValue(const char *what) const;
    EAccessMode conditionalAccessMode(AccessQuestion question) const;

    NodeMap &nodeMap;
    pugi::xml_node element;
    std::optional<Link> pIsImplemented;
    std::optional<Link> pIsAvailable;
    std::optional<Link> pIsLocked;
    EAccessMode imposedAccessMode = RW;
    mutable std::uint8_t askedAspects = 0; ///< asking changes nothing that shows
};

/// The mode that allows only what both allow.
EAccessMode narrower(EAccessMode left, EAccessMode right);
bool isReadable(EAccessMode mode);
bool isWritable(EAccessMode mode);

/// The mode that the child \p tag of a node states, or \p otherwise.
/// \throws PropertyException  it is none of RO, WO and RW
EAccessMode childAccessMode(const Node &node, const char *tag, EAccessMode otherwise);

} // namespace GenApi_3_2_TVN
