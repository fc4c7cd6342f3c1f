// SPDX-License-Identifier: MIT
// The kind Integer: a feature whose number is kept here or comes from another node.
#pragma once

#include "IntegerValueNode.h"

#include <vector>

namespace GenApi_3_2_TVN {

class IntegerNode : public IntegerValueNode
{
public:
    IntegerNode(NodeMap &nodeMap, pugi::xml_node element);

protected:
    std::int64_t readInteger(Reading reading) override;
    void writeInteger(std::int64_t value) override;
    std::int64_t readMinimum() override;
    std::int64_t readMaximum() override;
    std::int64_t readIncrement() override;
    EAccessMode ownAccessMode(AccessQuestion question) const override;

private:
    IntegerSource value;
    std::vector<Link> pValueCopies; ///< written along, never read
    IntegerSource min;
    IntegerSource max;
    IntegerSource inc;
};

} // namespace GenApi_3_2_TVN
