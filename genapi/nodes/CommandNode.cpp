// SPDX-License-Identifier: MIT
// See the header.
#include "CommandNode.h"

#include "NodeMap.h"

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::PropertyException;

CommandNode::CommandNode(NodeMap &nodeMap, pugi::xml_node element)
    : Node{nodeMap, element},
      value{*this, "Value", "pValue"},
      commandValue{*this, "CommandValue", "pCommandValue"}
{
    if (!value.isPresent())
        fail<PropertyException>("neither Value nor pValue");
    if (!commandValue.isPresent())
        fail<PropertyException>("neither CommandValue nor pCommandValue");
}

void CommandNode::Execute(bool)
{
    requireWritable();
    const Trail::Step step{map().trail(), *this, Aspect::Write, ""};
    map().dropCaches();
    value.setValue(commandValue.value({}));
}

/// The cache would answer with the command value that was just written.
bool CommandNode::IsDone(bool)
{
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
