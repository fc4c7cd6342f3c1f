// SPDX-License-Identifier: MIT
// See the header. A kind that the layer does not evaluate gets a node all the same: it has its properties,
// and words for whoever asks for its value.
#include "NodeFactory.h"

#include "BooleanNode.h"
#include "CategoryNode.h"
#include "CommandNode.h"
#include "ConverterNode.h"
#include "EnumEntryNode.h"
#include "EnumerationNode.h"
#include "FloatNode.h"
#include "FloatRegNode.h"
#include "IntConverterNode.h"
#include "IntRegNode.h"
#include "IntSwissKnifeNode.h"
#include "IntegerNode.h"
#include "PortNode.h"
#include "RegisterNode.h"
#include "StringNode.h"
#include "StringRegNode.h"
#include "SwissKnifeNode.h"
#include "UnevaluatedNode.h"

#include <string_view>
#include <utility>

namespace GenApi_3_2_TVN {
namespace {

using Maker = std::unique_ptr<Node> (*)(NodeMap &, pugi::xml_node);

template <class Kind>
std::unique_ptr<Node> make(NodeMap &nodeMap, pugi::xml_node element)
{
    return std::make_unique<Kind>(nodeMap, element);
}

constexpr std::pair<std::string_view, Maker> makers[] = {
    {"Boolean", make<BooleanNode>},
    {"Category", make<CategoryNode>},
    {"Command", make<CommandNode>},
    {"Converter", make<ConverterNode>},
    {"EnumEntry", make<EnumEntryNode>},
    {"Enumeration", make<EnumerationNode>},
    {"Float", make<FloatNode>},
    {"FloatReg", make<FloatRegNode>},
    {"IntConverter", make<IntConverterNode>},
    {"IntReg", make<IntRegNode>},
    {"IntSwissKnife", make<IntSwissKnifeNode>},
    {"Integer", make<IntegerNode>},
    {"MaskedIntReg", make<IntRegNode>},
    {"Port", make<PortNode>},
    {"Register", make<RegisterNode>},
    {"String", make<StringNode>},
    {"StringReg", make<StringRegNode>},
    {"StructEntry", make<IntRegNode>},
    {"StructReg", make<Node>},
    {"SwissKnife", make<SwissKnifeNode>},
};

} // namespace

std::unique_ptr<Node> makeNode(NodeMap &nodeMap, pugi::xml_node element)
{
    const std::string_view kind = element.name();
    for (const auto &[name, maker] : makers) {
        if (name == kind)
            return maker(nodeMap, element);
    }
    return std::make_unique<UnevaluatedNode>(nodeMap, element);
}

} // namespace GenApi_3_2_TVN
