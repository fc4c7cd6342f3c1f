// SPDX-License-Identifier: MIT
// A reference from one node to another, found when it is first used.
#pragma once

#include "IBase.h"
#include "Number.h"

#include <pugixml.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace GenApi_3_2_TVN {

class Node;
struct AccessQuestion;
struct Reading;

class Link
{
public:
    /// \param owner    the node that refers, which holds the link
    /// \param tag      the child that refers, a literal, for messages
    /// \param element  its element: its text names the other node, or it is a formula that stands there
    Link(Node &owner, const char *tag, pugi::xml_node element) : owner{&owner}, tag_{tag}, element{element} {}
    /// \param attribute  its value names the other node
    Link(Node &owner, const char *tag, pugi::xml_attribute attribute)
        : owner{&owner}, tag_{tag}, attribute{attribute}
    {}

    /// The link of the child \p tag, if there is one.
    static std::optional<Link> ofChild(Node &owner, const char *tag);

    /// \throws PropertyException  no node bears the name, or several do
    Node &node() const;
    const char *tag() const { return tag_; }

    /// What the other node throws passes through, here and below.
    Number number(Reading reading) const;
    /// As an integer, a fraction cut off.
    /// \throws OutOfRangeException  64 bits do not hold it
    std::int64_t integer(Reading reading) const;
    double real(Reading reading) const;
    /// Not zero, as a condition of the description asks.
    bool isTrue() const;
    void set(Number value) const;
    Number minimum() const;
    Number maximum() const;
    std::optional<Number> increment() const;
    EAccessMode accessMode(AccessQuestion question) const;

private:
    std::string targetName() const;

    Node *owner;
    const char *tag_;
    pugi::xml_node element;        ///< or
    pugi::xml_attribute attribute; ///< that
    mutable Node *target = nullptr;
};

} // namespace GenApi_3_2_TVN
