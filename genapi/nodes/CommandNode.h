// SPDX-License-Identifier: MIT
// The kind Command: writing one value into another node makes the device do something.
#pragma once

#include "ICommand.h"
#include "Node.h"
#include "NumberSource.h"

namespace GenApi_3_2_TVN {

class CommandNode : public Node, public ICommand
{
public:
    CommandNode(NodeMap &nodeMap, pugi::xml_node element);

    void Execute(bool verify) override;
    bool IsDone(bool verify) override;

protected:
    EAccessMode ownAccessMode(AccessQuestion question) const override;

private:
    NumberSource<std::int64_t> value;
    NumberSource<std::int64_t> commandValue;
};

} // namespace GenApi_3_2_TVN
