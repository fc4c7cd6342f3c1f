// SPDX-License-Identifier: MIT
// The kind IntConverter: another view of an inner integer, by one formula for reads and one for writes.
#pragma once

#include "IntegerValueNode.h"
#include "NodeFormula.h"

namespace GenApi_3_2_TVN {

class IntConverterNode : public IntegerValueNode
{
public:
    IntConverterNode(NodeMap &nodeMap, pugi::xml_node element);

protected:
    std::int64_t readInteger(Reading reading) override;
    void writeInteger(std::int64_t value) override;
    std::int64_t readMinimum() override;
    std::int64_t readMaximum() override;
    EAccessMode ownAccessMode(AccessQuestion question) const override;

private:
    enum class Slope
    {
        Increasing,
        Decreasing,
        Unknown ///< the description leaves it open, so the ends of the inner range say nothing
    };

    Slope statedSlope() const;

    std::optional<Link> pValue;
    NodeFormula formulaTo;
    NodeFormula formulaFrom;
    Slope slope;
};

} // namespace GenApi_3_2_TVN
