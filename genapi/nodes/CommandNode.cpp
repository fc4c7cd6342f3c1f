// SPDX-License-Identifier: MIT
// See the header.
#include "CommandNode.h"

#include "NodeMap.h"

namespace GenApi_3_2_TVN {

CommandNode::CommandNode(NodeMap &nodeMap, pugi::xml_node element)
    : Node{nodeMap, element},
      value{NumberSource<std::int64_t>::required(*this, "Value", "pValue")},
      commandValue{NumberSource<std::int64_t>::required(*this, "CommandValue", "pCommandValue")}
{}

void CommandNode::Execute(bool)
{
    const Trail::Call call{map().trail()};
    requireWritable();
    const Trail::Step step{map().trail(), *this, Aspect::Write, ""};
    map().registers().expire();
    value.setValue(commandValue.value({}));
}

/// The cache would answer with the command value that was just written.
bool CommandNode::IsDone(bool)
{
    const Trail::Call call{map().trail()};
    if (value.link() == nullptr || !isReadable(accessMode("", {.includePort = false})))
        return true;
    const Trail::Step step{map().trail(), *this, Aspect::Value, ""};
    return value.value({.ignoreCache = true}) != commandValue.value({});
}

EAccessMode CommandNode::ownAccessMode(AccessQuestion question) const
{
    return value.link() != nullptr ? value.link()->accessMode(question) : WO;
}

} // namespace GenApi_3_2_TVN
