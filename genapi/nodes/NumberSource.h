// SPDX-License-Identifier: MIT
// Where a number of a node comes from: written in the description (as "Min") or another node (as "pMin").
#pragma once

#include "Link.h"
#include "Node.h"

#include <string>
#include <type_traits>
#include <variant>

namespace GenApi_3_2_TVN {

/// \tparam T  std::int64_t or double
template <class T>
class NumberSource
{
public:
    NumberSource() = default;

    /// Of the children \p linkTag and, without it, \p tag of \p owner, both literals.
    /// \throws PropertyException  the text is no such number
    NumberSource(Node &owner, const char *tag, const char *linkTag)
    {
        if (const pugi::xml_node child = owner.child(linkTag))
            source = Link{owner, linkTag, child};
        else if (const pugi::xml_node written = owner.child(tag))
            source = owner.numberOf<T>(written);
    }
    /// As above, where one of both has to be there.
    /// \throws PropertyException  also when neither is
    static NumberSource required(Node &owner, const char *tag, const char *linkTag)
    {
        const NumberSource found{owner, tag, linkTag};
        if (!found.isPresent())
            owner.fail<GenICam_3_2_TVN::PropertyException>(std::string{"neither "} + tag + " nor " + linkTag);
        return found;
    }

    explicit NumberSource(T value) : source{value} {}
    explicit NumberSource(const Link &link) : source{link} {}

    bool isPresent() const { return !std::holds_alternative<std::monostate>(source); }
    /// Null when the number is written in the description.
    const Link *link() const { return std::get_if<Link>(&source); }

    T value(Reading reading) const
    {
        const Link *const other = link();
        if (other == nullptr)
            return std::get<T>(source);
        if constexpr (std::is_same_v<T, double>)
            return other->real(reading);
        else
            return other->integer(reading);
    }

    /// As it is, not yet as a T.
    Number number() const { return link() != nullptr ? link()->number({}) : Number{std::get<T>(source)}; }

    /// A value of the description is kept here, for this node map alone.
    void setValue(T value)
    {
        if (const Link *const other = link())
            return other->set(value);
        source = value;
    }

private:
    std::variant<std::monostate, T, Link> source;
};

} // namespace GenApi_3_2_TVN
