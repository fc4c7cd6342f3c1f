// SPDX-License-Identifier: MIT
// See the header.
#include "EnumEntryNode.h"

#include "ElementText.h"

namespace GenApi_3_2_TVN {

EnumEntryNode::EnumEntryNode(NodeMap &nodeMap, pugi::xml_node element)
    : Node{nodeMap, element}, isSelfClearing{childSays("IsSelfClearing", "Yes", "No")}
{
    const pugi::xml_node stated = child("Value");
    if (!stated)
        fail<GenICam_3_2_TVN::PropertyException>("no Value");
    value = numberOf<std::int64_t>(stated);
    const pugi::xml_node numeric = child("NumericValue");
    numericValue = numeric ? numberOf<double>(numeric) : static_cast<double>(value);
}

std::string EnumEntryNode::symbolicOf(pugi::xml_node element)
{
    const pugi::xml_node stated = element.child("Symbolic");
    return stated ? textOf(stated) : element.attribute("Name").value();
}

} // namespace GenApi_3_2_TVN
