// SPDX-License-Identifier: MIT
// See the header.
#include "FloatValueNode.h"

#include "NodeMap.h"

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::PropertyException;

double FloatValueNode::GetValue(bool verify, bool ignoreCache)
{
    const Trail::Call call{map().trail()};
    requireReadable();
    const double value = number("", {ignoreCache}).real();
    if (verify)
        requireInRange(value);
    return value;
}

void FloatValueNode::SetValue(double value, bool verify)
{
    const Trail::Call call{map().trail()};
    requireWritable();
    if (verify)
        requireInRange(value);
    setNumber("", value);
}

double FloatValueNode::GetInc()
{
    const std::optional<Number> step = increment("");
    if (!step)
        fail<PropertyException>("it has no increment");
    return step->real();
}

/// For kinds that are computed.
void FloatValueNode::writeReal(double value)
{
    Node::writeNumber(value);
}

/// Written so that what is no number lies outside.
void FloatValueNode::requireInRange(double value)
{
    const double lowest = GetMin();
    const double highest = GetMax();
    if (!(value >= lowest && value <= highest))
        refuseOutside(value, lowest, highest);
}

} // namespace GenApi_3_2_TVN
