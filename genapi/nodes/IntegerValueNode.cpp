// SPDX-License-Identifier: MIT
// See the header.
#include "IntegerValueNode.h"

#include <limits>

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::OutOfRangeException;

std::int64_t IntegerValueNode::GetValue(bool verify, bool ignoreCache)
{
    requireReadable();
    const std::int64_t value = integer("", {ignoreCache});
    if (verify)
        requireInRange(value);
    return value;
}

void IntegerValueNode::SetValue(std::int64_t value, bool verify)
{
    requireWritable();
    if (verify) {
        requireInRange(value);
        requireOnStep(value);
    }
    setInteger("", value);
}

std::int64_t IntegerValueNode::readMinimum()
{
    return std::numeric_limits<std::int64_t>::min();
}

std::int64_t IntegerValueNode::readMaximum()
{
    return std::numeric_limits<std::int64_t>::max();
}

void IntegerValueNode::requireInRange(std::int64_t value)
{
    const std::int64_t lowest = GetMin();
    const std::int64_t highest = GetMax();
    if (value < lowest || value > highest)
        fail<OutOfRangeException>(std::to_string(value) + " lies outside " + std::to_string(lowest) + " to " +
                                  std::to_string(highest));
}

/// The distance of two 64-bit numbers needs all 64 bits and no sign.
void IntegerValueNode::requireOnStep(std::int64_t value)
{
    const std::int64_t lowest = GetMin();
    const std::int64_t step = GetInc();
    const std::uint64_t distance = static_cast<std::uint64_t>(value) - static_cast<std::uint64_t>(lowest);
    if (distance % static_cast<std::uint64_t>(step) != 0)
        fail<OutOfRangeException>(std::to_string(value) + " is not " + std::to_string(lowest) +
                                  " plus a multiple of " + std::to_string(step));
}

} // namespace GenApi_3_2_TVN
