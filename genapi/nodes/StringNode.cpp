// SPDX-License-Identifier: MIT
// See the header.
#include "StringNode.h"

#include "Limits.h"
#include "NodeMap.h"

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::gcstring;
using GenICam_3_2_TVN::OutOfRangeException;
using GenICam_3_2_TVN::PropertyException;

gcstring TextNode::GetValue(bool, bool ignoreCache)
{
    const Trail::Call call{map().trail()};
    requireReadable();
    return gcstring{std::string_view{text("", {ignoreCache})}};
}

/// A text that is too long is refused with verify and without: there is no place for it.
void TextNode::SetValue(const gcstring &newText, bool)
{
    const Trail::Call call{map().trail()};
    requireWritable();
    const std::int64_t most = GetMaxLength();
    if (newText.length() > static_cast<std::size_t>(most))
        fail<OutOfRangeException>("a text of " + std::to_string(newText.length()) + " bytes; possible are " +
                                  std::to_string(most));
    setText("", std::string{std::string_view{newText}});
}

StringNode::StringNode(NodeMap &nodeMap, pugi::xml_node element)
    : TextNode{nodeMap, element},
      pValue{Link::ofChild(*this, "pValue")},
      value{childText("Value").value_or("")}
{
    if (!pValue && !element.child("Value"))
        fail<PropertyException>("neither Value nor pValue");
}

std::string StringNode::readText(Reading reading)
{
    return pValue ? pValue->node().text("pValue", reading) : value;
}

void StringNode::writeText(const std::string &newText)
{
    if (pValue)
        pValue->node().setText("pValue", newText);
    else
        value = newText;
}

std::int64_t StringNode::readMaximumLength()
{
    return pValue ? pValue->node().maximumLength("pValue") : limits::registerLength;
}

EAccessMode StringNode::ownAccessMode(AccessQuestion question) const
{
    return pValue ? pValue->accessMode(question) : RW;
}

} // namespace GenApi_3_2_TVN
