// SPDX-License-Identifier: MIT
// What all nodes with an integer value do for a call from outside: check the access mode and the range, then
// take the inner road.
#pragma once

#include "IInteger.h"
#include "Node.h"

namespace GenApi_3_2_TVN {

class IntegerValueNode : public Node, public IInteger
{
public:
    using Node::Node;

    std::int64_t GetValue(bool verify, bool ignoreCache) override;
    void SetValue(std::int64_t value, bool verify) override;
    std::int64_t GetMin() override { return minimum(""); }
    std::int64_t GetMax() override { return maximum(""); }
    std::int64_t GetInc() override { return increment(""); }

protected:
    std::int64_t readMinimum() override;
    std::int64_t readMaximum() override;
    std::int64_t readIncrement() override { return 1; }

private:
    void requireInRange(std::int64_t value);
    void requireOnStep(std::int64_t value);
};

} // namespace GenApi_3_2_TVN
