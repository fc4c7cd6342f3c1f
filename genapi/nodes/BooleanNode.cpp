// SPDX-License-Identifier: MIT
// See the header.
#include "BooleanNode.h"

#include "NodeMap.h"

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::PropertyException;

BooleanNode::BooleanNode(NodeMap &nodeMap, pugi::xml_node element)
    : Node{nodeMap, element},
      onValue{childInteger("OnValue").value_or(1)},
      offValue{childInteger("OffValue").value_or(0)},
      pValue{Link::ofChild(*this, "pValue")},
      value{!pValue && statedValue()}
{}

bool BooleanNode::statedValue() const
{
    const std::optional<std::string> text = childText("Value");
    if (!text)
        fail<PropertyException>("neither Value nor pValue");
    if (*text == "true" || *text == "false")
        return *text == "true";
    return childInteger("Value") == onValue;
}

bool BooleanNode::GetValue(bool, bool ignoreCache)
{
    requireReadable();
    return integer("", {ignoreCache}) != 0;
}

void BooleanNode::SetValue(bool newValue, bool)
{
    requireWritable();
    setInteger("", newValue ? 1 : 0);
}

std::int64_t BooleanNode::readInteger(Reading reading)
{
    const bool isOn = pValue ? pValue->integer(reading) == onValue : value;
    return isOn ? 1 : 0;
}

void BooleanNode::writeInteger(std::int64_t newValue)
{
    map().dropCaches();
    if (pValue)
        pValue->setInteger(newValue != 0 ? onValue : offValue);
    else
        value = newValue != 0;
}

EAccessMode BooleanNode::ownAccessMode(AccessQuestion question) const
{
    return pValue ? pValue->node().accessMode("pValue", question) : RW;
}

} // namespace GenApi_3_2_TVN
