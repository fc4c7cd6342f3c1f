// SPDX-License-Identifier: MIT
// The kind Boolean: an integer of which one value means true.
#pragma once

#include "IBoolean.h"
#include "Node.h"

namespace GenApi_3_2_TVN {

class BooleanNode : public Node, public IBoolean
{
public:
    BooleanNode(NodeMap &nodeMap, pugi::xml_node element);

    bool GetValue(bool verify, bool ignoreCache) override;
    void SetValue(bool value, bool verify) override;

protected:
    /// 1 for true and 0 for false, for nodes that take it as a condition.
    Number readNumber(Reading reading) override;
    void writeNumber(Number value) override;
    Number readMinimum() override { return std::int64_t{0}; }
    Number readMaximum() override { return std::int64_t{1}; }
    EAccessMode ownAccessMode(AccessQuestion question) const override;

private:
    bool statedValue() const;

    std::int64_t onValue;
    std::int64_t offValue;
    std::optional<Link> pValue;
    bool value = false; ///< without pValue
};

} // namespace GenApi_3_2_TVN
