// SPDX-License-Identifier: MIT
// The kind IntConverter: another view of an inner node, by one formula for reads and one for writes.
#pragma once

#include "Conversion.h"
#include "IntegerValueNode.h"

namespace GenApi_3_2_TVN {

class IntConverterNode : public IntegerValueNode
{
public:
    IntConverterNode(NodeMap &nodeMap, pugi::xml_node element)
        : IntegerValueNode{nodeMap, element}, conversion{*this}
    {}

protected:
    std::int64_t readInteger(Reading reading) override { return conversion.read(reading); }
    void writeInteger(std::int64_t value) override { conversion.write(value); }
    Number readMinimum() override { return conversion.range().first; }
    Number readMaximum() override { return conversion.range().second; }
    EAccessMode ownAccessMode(AccessQuestion question) const override
    {
        return conversion.accessMode(question);
    }

private:
    Conversion<std::int64_t> conversion;
};

} // namespace GenApi_3_2_TVN
