// SPDX-License-Identifier: MIT
// The kind StringReg: a text in a register. Cameras state a length of 0 for one that they do not have: it is empty.
#pragma once

#include "RegisterAccess.h"
#include "StringNode.h"

namespace GenApi_3_2_TVN {

class StringRegNode : public TextNode, public RegisterAccess
{
public:
    StringRegNode(NodeMap &nodeMap, pugi::xml_node element) : TextNode{nodeMap, element}, RegisterAccess{this}
    {}

protected:
    std::string readText(Reading reading) override;
    void writeText(const std::string &newText) override;
    std::int64_t readMaximumLength() override { return bytes.readTextLength(); }
    EAccessMode ownAccessMode(AccessQuestion question) const override { return bytes.accessMode(question); }
};

} // namespace GenApi_3_2_TVN
