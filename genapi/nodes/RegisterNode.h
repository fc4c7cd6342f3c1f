// SPDX-License-Identifier: MIT
// The kind Register: bytes without a meaning here.
#pragma once

#include "RegisterAccess.h"

namespace GenApi_3_2_TVN {

class RegisterNode : public Node, public RegisterAccess
{
public:
    RegisterNode(NodeMap &nodeMap, pugi::xml_node element) : Node{nodeMap, element}, RegisterAccess{this} {}

protected:
    EAccessMode ownAccessMode(AccessQuestion question) const override { return bytes.accessMode(question); }
};

} // namespace GenApi_3_2_TVN
