// SPDX-License-Identifier: MIT
// See the header.
#include "Link.h"

#include "ElementText.h"
#include "Node.h"
#include "NodeMap.h"

#include <cstring>

namespace GenApi_3_2_TVN {

std::optional<Link> Link::ofChild(Node &owner, const char *tag)
{
    if (const pugi::xml_node child = owner.child(tag))
        return Link{owner, tag, child};
    return std::nullopt;
}

std::string Link::targetName() const
{
    return attribute ? attribute.value() : textOf(element);
}

Node &Link::node() const
{
    if (target != nullptr)
        return *target;
    const bool isInlineFormula = std::strcmp(element.name(), "IntSwissKnife") == 0;
    target = isInlineFormula ? &owner->map().nodeOf(element) : owner->map().find(targetName());
    if (target == nullptr)
        owner->fail<GenICam_3_2_TVN::PropertyException>(std::string{tag_} + " names '" + shown(targetName()) +
                                                        "', which the description does not have");
    return *target;
}

Number Link::number(Reading reading) const
{
    return node().number(tag_, reading);
}

std::int64_t Link::integer(Reading reading) const
{
    const Number value = number(reading);
    if (const std::optional<std::int64_t> integer = value.truncated())
        return *integer;
    owner->fail<GenICam_3_2_TVN::OutOfRangeException>(std::string{tag_} + " gives " + value.text() +
                                                      ", which is no 64-bit integer");
}

double Link::real(Reading reading) const
{
    return number(reading).real();
}

bool Link::isTrue() const
{
    return !number({}).isZero();
}

void Link::set(Number value) const
{
    node().setNumber(tag_, value);
}

Number Link::minimum() const
{
    return node().minimum(tag_);
}

Number Link::maximum() const
{
    return node().maximum(tag_);
}

std::optional<Number> Link::increment() const
{
    return node().increment(tag_);
}

EAccessMode Link::accessMode(AccessQuestion question) const
{
    return node().accessMode(tag_, question);
}

} // namespace GenApi_3_2_TVN
