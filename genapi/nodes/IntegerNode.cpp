// SPDX-License-Identifier: MIT
// See the header.
#include "IntegerNode.h"

#include "NodeMap.h"

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::PropertyException;

IntegerNode::IntegerNode(NodeMap &nodeMap, pugi::xml_node element)
    : IntegerValueNode{nodeMap, element},
      value{*this, "Value", "pValue"},
      min{*this, "Min", "pMin"},
      max{*this, "Max", "pMax"},
      inc{*this, "Inc", "pInc"}
{
    if (!value.isPresent())
        fail<PropertyException>(element.child("pIndex") ? "indexed values are not evaluated in this version"
                                                        : "neither Value nor pValue");
    for (const pugi::xml_node copy : element.children("pValueCopy"))
        pValueCopies.emplace_back(*this, "pValueCopy", copy);
}

std::int64_t IntegerNode::readInteger(Reading reading)
{
    return value.value(reading);
}

void IntegerNode::writeInteger(std::int64_t newValue)
{
    map().dropCaches();
    value.setValue(newValue);
    for (const Link &copy : pValueCopies)
        copy.setInteger(newValue);
}

std::int64_t IntegerNode::readMinimum()
{
    if (min.isPresent())
        return min.value({});
    return value.link() != nullptr ? value.link()->node().minimum("pValue") : IntegerValueNode::readMinimum();
}

std::int64_t IntegerNode::readMaximum()
{
    if (max.isPresent())
        return max.value({});
    return value.link() != nullptr ? value.link()->node().maximum("pValue") : IntegerValueNode::readMaximum();
}

std::int64_t IntegerNode::readIncrement()
{
    if (!inc.isPresent())
        return value.link() != nullptr ? value.link()->node().increment("pValue") : 1;
    const std::int64_t step = inc.value({});
    if (step < 1)
        fail<PropertyException>("its increment is " + std::to_string(step));
    return step;
}

EAccessMode IntegerNode::ownAccessMode(AccessQuestion question) const
{
    return value.link() != nullptr ? value.link()->node().accessMode("pValue", question) : RW;
}

} // namespace GenApi_3_2_TVN
