// SPDX-License-Identifier: MIT
// The kind IntSwissKnife: an integer computed from other nodes.
#pragma once

#include "IntegerValueNode.h"
#include "NodeFormula.h"

namespace GenApi_3_2_TVN {

class IntSwissKnifeNode : public IntegerValueNode
{
public:
    IntSwissKnifeNode(NodeMap &nodeMap, pugi::xml_node element)
        : IntegerValueNode{nodeMap, element}, formula{*this, "Formula"}
    {}

protected:
    std::int64_t readInteger(Reading reading) override { return formula.evaluate<std::int64_t>(reading); }
    EAccessMode ownAccessMode(AccessQuestion question) const override
    {
        return narrower(RO, formula.accessMode(question));
    }

private:
    NodeFormula formula;
};

} // namespace GenApi_3_2_TVN
