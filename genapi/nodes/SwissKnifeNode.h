// SPDX-License-Identifier: MIT
// The kind SwissKnife: a float computed from other nodes.
#pragma once

#include "FloatValueNode.h"
#include "NodeFormula.h"

namespace GenApi_3_2_TVN {

class SwissKnifeNode : public FloatValueNode
{
public:
    SwissKnifeNode(NodeMap &nodeMap, pugi::xml_node element)
        : FloatValueNode{nodeMap, element}, formula{*this, "Formula"}
    {}

protected:
    double readReal(Reading reading) override { return formula.evaluate<double>(reading); }
    EAccessMode ownAccessMode(AccessQuestion question) const override
    {
        return narrower(RO, formula.accessMode(question));
    }

private:
    NodeFormula formula;
};

} // namespace GenApi_3_2_TVN
