// SPDX-License-Identifier: MIT
// The kind Converter: a float as another view of an inner node, by one formula for reads and one for writes.
#pragma once

#include "Conversion.h"
#include "FloatValueNode.h"

namespace GenApi_3_2_TVN {

class ConverterNode : public FloatValueNode
{
public:
    ConverterNode(NodeMap &nodeMap, pugi::xml_node element)
        : FloatValueNode{nodeMap, element}, conversion{*this}
    {}

protected:
    double readReal(Reading reading) override { return conversion.read(reading); }
    void writeReal(double value) override { conversion.write(value); }
    Number readMinimum() override { return conversion.range().first; }
    Number readMaximum() override { return conversion.range().second; }
    EAccessMode ownAccessMode(AccessQuestion question) const override
    {
        return conversion.accessMode(question);
    }

private:
    Conversion<double> conversion;
};

} // namespace GenApi_3_2_TVN
