// SPDX-License-Identifier: MIT
// Kinds that have a name, properties and an access mode here but no value yet. Where the kind has an
// interface for its value, the node has it too, and answers with words.
#pragma once

#include "IFloat.h"
#include "IntegerValueNode.h"
#include "Node.h"

namespace GenApi_3_2_TVN {

class UnevaluatedNode : public Node
{
public:
    using Node::Node;

protected:
    bool isEvaluated() const override { return false; }
};

class UnevaluatedIntegerNode : public IntegerValueNode
{
public:
    using IntegerValueNode::IntegerValueNode;

protected:
    bool isEvaluated() const override { return false; }
    EAccessMode ownAccessMode(AccessQuestion) const override { return RW; }
};

class UnevaluatedFloatNode : public UnevaluatedNode, public IFloat
{
public:
    using UnevaluatedNode::UnevaluatedNode;

    double GetValue(bool, bool) override { refuse(); }
    void SetValue(double, bool) override { refuse(); }
    double GetMin() override { refuse(); }
    double GetMax() override { refuse(); }

private:
    [[noreturn]] void refuse() const;
};

} // namespace GenApi_3_2_TVN
