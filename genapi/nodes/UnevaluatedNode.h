// SPDX-License-Identifier: MIT
// Kinds of older transports, and what the layer has never heard of: they have a name, properties and an access mode
// here, and words for whoever asks for a value.
#pragma once

#include "Node.h"

namespace GenApi_3_2_TVN {

class UnevaluatedNode : public Node
{
public:
    using Node::Node;

protected:
    bool isEvaluated() const override { return false; }
};

} // namespace GenApi_3_2_TVN
