// SPDX-License-Identifier: MIT
// The kind Float: a feature whose float is kept here or comes from another node.
#pragma once

#include "FeatureValue.h"
#include "FloatValueNode.h"

namespace GenApi_3_2_TVN {

class FloatNode : public FloatValueNode
{
public:
    FloatNode(NodeMap &nodeMap, pugi::xml_node element) : FloatValueNode{nodeMap, element}, value{*this} {}

protected:
    double readReal(Reading reading) override { return value.read(reading); }
    void writeReal(double newValue) override { value.write(newValue); }
    Number readMinimum() override { return value.minimum(); }
    Number readMaximum() override { return value.maximum(); }
    std::optional<Number> readIncrement() override { return value.increment(); }
    EAccessMode ownAccessMode(AccessQuestion question) const override { return value.accessMode(question); }

private:
    FeatureValue<double> value;
};

} // namespace GenApi_3_2_TVN
