// SPDX-License-Identifier: MIT
// The kind Integer: a feature whose number is kept here or comes from another node.
#pragma once

#include "FeatureValue.h"
#include "IntegerValueNode.h"

namespace GenApi_3_2_TVN {

class IntegerNode : public IntegerValueNode
{
public:
    IntegerNode(NodeMap &nodeMap, pugi::xml_node element) : IntegerValueNode{nodeMap, element}, value{*this}
    {}

protected:
    std::int64_t readInteger(Reading reading) override { return value.read(reading); }
    void writeInteger(std::int64_t newValue) override { value.write(newValue); }
    Number readMinimum() override { return value.minimum(); }
    Number readMaximum() override { return value.maximum(); }
    std::optional<Number> readIncrement() override
    {
        const std::optional<Number> step = value.increment();
        return step ? step : IntegerValueNode::readIncrement();
    }
    EAccessMode ownAccessMode(AccessQuestion question) const override { return value.accessMode(question); }

private:
    FeatureValue<std::int64_t> value;
};

} // namespace GenApi_3_2_TVN
