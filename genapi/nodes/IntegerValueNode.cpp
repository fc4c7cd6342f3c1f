// SPDX-License-Identifier: MIT
// See the header.
#include "IntegerValueNode.h"

#include "NodeMap.h"

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::OutOfRangeException;
using GenICam_3_2_TVN::PropertyException;

std::int64_t IntegerValueNode::GetValue(bool verify, bool ignoreCache)
{
    const Trail::Call call{map().trail()};
    requireReadable();
    const std::int64_t value = *number("", {ignoreCache}).truncated();
    if (verify)
        requireInRange(value);
    return value;
}

void IntegerValueNode::SetValue(std::int64_t value, bool verify)
{
    const Trail::Call call{map().trail()};
    requireWritable();
    if (verify) {
        requireInRange(value);
        requireOnStep(value);
    }
    setNumber("", value);
}

/// A step below 1 is a fault of the description; the node map would divide by it.
std::int64_t IntegerValueNode::GetInc()
{
    const Number step = *increment("");
    const std::optional<std::int64_t> whole = step.truncated();
    if (!whole || *whole < 1)
        fail<PropertyException>("its increment is " + step.text());
    return *whole;
}

/// For kinds that are computed.
void IntegerValueNode::writeInteger(std::int64_t value)
{
    Node::writeNumber(value);
}

void IntegerValueNode::requireInRange(std::int64_t value)
{
    const std::int64_t lowest = GetMin();
    const std::int64_t highest = GetMax();
    if (value < lowest || value > highest)
        refuseOutside(value, lowest, highest);
}

/// The distance of two 64-bit numbers needs all 64 bits and no sign.
void IntegerValueNode::requireOnStep(std::int64_t value)
{
    const std::int64_t lowest = GetMin();
    const std::int64_t step = GetInc();
    const std::uint64_t distance = static_cast<std::uint64_t>(value) - static_cast<std::uint64_t>(lowest);
    if (distance % static_cast<std::uint64_t>(step) != 0)
        fail<OutOfRangeException>(withUnit(value) + " is not " + withUnit(lowest) + " plus a multiple of " +
                                  withUnit(step));
}

} // namespace GenApi_3_2_TVN
