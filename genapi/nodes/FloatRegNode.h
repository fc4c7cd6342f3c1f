// SPDX-License-Identifier: MIT
// The kind FloatReg: an IEEE 754 float in a register of 4 or 8 bytes.
#pragma once

#include "FloatValueNode.h"
#include "RegisterAccess.h"

#include <cstddef>

namespace GenApi_3_2_TVN {

class FloatRegNode : public FloatValueNode, public RegisterAccess
{
public:
    FloatRegNode(NodeMap &nodeMap, pugi::xml_node element)
        : FloatValueNode{nodeMap, element},
          RegisterAccess{this},
          isBigEndian{childSays("Endianess", "BigEndian", "LittleEndian")}
    {}

protected:
    double readReal(Reading reading) override;
    void writeReal(double value) override;
    Number readMinimum() override;
    Number readMaximum() override;
    EAccessMode ownAccessMode(AccessQuestion question) const override { return bytes.accessMode(question); }

private:
    bool isSingle() const;

    bool isBigEndian;
};

} // namespace GenApi_3_2_TVN
