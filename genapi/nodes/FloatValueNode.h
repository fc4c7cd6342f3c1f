// SPDX-License-Identifier: MIT
// What all nodes with a float value do for a call from outside, as IntegerValueNode does for integers.
#pragma once

#include "IFloat.h"
#include "Node.h"

namespace GenApi_3_2_TVN {

class FloatValueNode : public Node, public IFloat
{
public:
    using Node::Node;

    double GetValue(bool verify, bool ignoreCache) override;
    void SetValue(double value, bool verify) override;
    double GetMin() override { return minimum("").real(); }
    double GetMax() override { return maximum("").real(); }
    bool HasInc() override { return increment("").has_value(); }
    double GetInc() override;

protected:
    virtual double readReal(Reading reading) = 0;
    virtual void writeReal(double value);
    Number readNumber(Reading reading) final { return readReal(reading); }
    void writeNumber(Number value) final { writeReal(value.real()); }
    Number readMinimum() override { return lowestOf<double>; }
    Number readMaximum() override { return highestOf<double>; }

private:
    void requireInRange(double value);
};

} // namespace GenApi_3_2_TVN
