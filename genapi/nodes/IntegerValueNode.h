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
    std::int64_t GetMin() override { return minimum("").ceiling(); }
    std::int64_t GetMax() override { return maximum("").floor(); }
    std::int64_t GetInc() override;

protected:
    virtual std::int64_t readInteger(Reading reading) = 0;
    virtual void writeInteger(std::int64_t value);
    Number readNumber(Reading reading) final { return readInteger(reading); }
    void writeNumber(Number value) final { writeInteger(wholeOf(value)); }
    Number readMinimum() override { return lowestOf<std::int64_t>; }
    Number readMaximum() override { return highestOf<std::int64_t>; }
    std::optional<Number> readIncrement() override { return std::int64_t{1}; }

private:
    void requireInRange(std::int64_t value);
    void requireOnStep(std::int64_t value);
};

} // namespace GenApi_3_2_TVN
