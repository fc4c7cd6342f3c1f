// SPDX-License-Identifier: MIT
// A reference from one node to another, found when it is first used.
#pragma once

#include <pugixml.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace GenApi_3_2_TVN {

class Node;
struct Reading;

class Link
{
public:
    /// \param owner    the node that refers, which holds the link
    /// \param tag      the child that refers, a literal, for messages
    /// \param element  its element: its text names the other node, or it is a formula that stands there
    Link(Node &owner, const char *tag, pugi::xml_node element);
    Link(Node &owner, const char *tag, std::string targetName);

    /// The link of the child \p tag, if there is one.
    static std::optional<Link> ofChild(Node &owner, const char *tag);

    /// \throws PropertyException  no node bears the name, or several do
    Node &node() const;
    const char *tag() const { return tag_; }

    std::int64_t integer(Reading reading) const;
    void setInteger(std::int64_t value) const;

private:
    Node *owner;
    const char *tag_;
    std::string targetName;
    pugi::xml_node inlineFormula; ///< null when a name refers
    mutable Node *target = nullptr;
};

/// A number that is either written in the description (as "Min") or comes from another node (as "pMin").
class IntegerSource
{
public:
    /// \throws PropertyException  the text is not an integer
    IntegerSource(Node &owner, const char *tag, const char *linkTag);

    bool isPresent() const { return !std::holds_alternative<std::monostate>(source); }
    std::int64_t value(Reading reading) const;
    /// A value of the description is kept here, for this node map alone.
    void setValue(std::int64_t value);
    const Link *link() const { return std::get_if<Link>(&source); }

private:
    std::variant<std::monostate, std::int64_t, Link> source;
};

} // namespace GenApi_3_2_TVN
