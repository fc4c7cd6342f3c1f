// SPDX-License-Identifier: MIT
// See the header.
#include "Link.h"

#include "ElementText.h"
#include "Node.h"
#include "NodeMap.h"

#include <cstring>
#include <utility>

namespace GenApi_3_2_TVN {

Link::Link(Node &owner, const char *tag, pugi::xml_node element) : owner{&owner}, tag_{tag}
{
    if (std::strcmp(element.name(), "IntSwissKnife") == 0)
        inlineFormula = element;
    else
        targetName = textOf(element);
}

Link::Link(Node &owner, const char *tag, std::string targetName)
    : owner{&owner}, tag_{tag}, targetName{std::move(targetName)}
{}

std::optional<Link> Link::ofChild(Node &owner, const char *tag)
{
    if (const pugi::xml_node child = owner.xml().child(tag))
        return Link{owner, tag, child};
    return std::nullopt;
}

Node &Link::node() const
{
    if (target != nullptr)
        return *target;
    target = inlineFormula ? &owner->map().nodeOf(inlineFormula) : owner->map().find(targetName);
    if (target == nullptr)
        owner->fail<GenICam_3_2_TVN::PropertyException>(std::string{tag_} + " names '" + targetName +
                                                        "', which the description does not have");
    return *target;
}

std::int64_t Link::integer(Reading reading) const
{
    return node().integer(tag_, reading);
}

void Link::setInteger(std::int64_t value) const
{
    node().setInteger(tag_, value);
}

IntegerSource::IntegerSource(Node &owner, const char *tag, const char *linkTag)
{
    if (const pugi::xml_node child = owner.xml().child(linkTag))
        source = Link{owner, linkTag, child};
    else if (const std::optional<std::int64_t> value = owner.childInteger(tag))
        source = *value;
}

std::int64_t IntegerSource::value(Reading reading) const
{
    if (const Link *const other = link())
        return other->integer(reading);
    return std::get<std::int64_t>(source);
}

void IntegerSource::setValue(std::int64_t value)
{
    if (const Link *const other = link())
        return other->setInteger(value);
    source = value;
}

} // namespace GenApi_3_2_TVN
