// SPDX-License-Identifier: MIT
// See the header.
#include "IntConverterNode.h"

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::PropertyException;

IntConverterNode::IntConverterNode(NodeMap &nodeMap, pugi::xml_node element)
    : IntegerValueNode{nodeMap, element},
      pValue{Link::ofChild(*this, "pValue")},
      formulaTo{*this, "FormulaTo", "FROM"},
      formulaFrom{*this, "FormulaFrom", "TO"},
      slope{statedSlope()}
{
    if (!pValue)
        fail<PropertyException>("no pValue");
}

IntConverterNode::Slope IntConverterNode::statedSlope() const
{
    const std::string text = childText("Slope").value_or("Automatic");
    if (text == "Increasing")
        return Slope::Increasing;
    return text == "Decreasing" ? Slope::Decreasing : Slope::Unknown;
}

std::int64_t IntConverterNode::readInteger(Reading reading)
{
    return formulaFrom.evaluateInteger(reading, pValue->integer(reading));
}

void IntConverterNode::writeInteger(std::int64_t value)
{
    pValue->setInteger(formulaTo.evaluateInteger({}, value));
}

std::int64_t IntConverterNode::readMinimum()
{
    if (slope == Slope::Unknown)
        return IntegerValueNode::readMinimum();
    Node &inner = pValue->node();
    return formulaFrom.evaluateInteger({}, slope == Slope::Increasing ? inner.minimum("pValue")
                                                                      : inner.maximum("pValue"));
}

std::int64_t IntConverterNode::readMaximum()
{
    if (slope == Slope::Unknown)
        return IntegerValueNode::readMaximum();
    Node &inner = pValue->node();
    return formulaFrom.evaluateInteger({}, slope == Slope::Increasing ? inner.maximum("pValue")
                                                                      : inner.minimum("pValue"));
}

EAccessMode IntConverterNode::ownAccessMode(AccessQuestion question) const
{
    return pValue->node().accessMode("pValue", question);
}

} // namespace GenApi_3_2_TVN
