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
    const Trail::Call call{map().trail()};
    requireReadable();
    return !number("", {ignoreCache}).isZero();
}

void BooleanNode::SetValue(bool newValue, bool)
{
    const Trail::Call call{map().trail()};
    requireWritable();
    setNumber("", std::int64_t{newValue});
}

Number BooleanNode::readNumber(Reading reading)
{
    const bool isOn = pValue ? pValue->integer(reading) == onValue : value;
    return std::int64_t{isOn};
}

void BooleanNode::writeNumber(Number newValue)
{
    if (pValue)
        pValue->set(newValue.isZero() ? offValue : onValue);
    else
        value = !newValue.isZero();
}

EAccessMode BooleanNode::ownAccessMode(AccessQuestion question) const
{
    return pValue ? pValue->accessMode(question) : RW;
}

} // namespace GenApi_3_2_TVN
