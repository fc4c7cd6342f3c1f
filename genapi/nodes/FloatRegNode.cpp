// SPDX-License-Identifier: MIT
// See the header.
#include "FloatRegNode.h"

#include "ByteOrder.h"

#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::OutOfRangeException;
using GenICam_3_2_TVN::PropertyException;

static_assert(std::numeric_limits<float>::is_iec559 && std::numeric_limits<double>::is_iec559);

bool FloatRegNode::isSingle() const
{
    const std::int64_t length = bytes.readLength();
    if (length != sizeof(float) && length != sizeof(double))
        fail<PropertyException>("a float in a register of " + std::to_string(length) +
                                " bytes; possible are 4 and 8");
    return length == sizeof(float);
}

double FloatRegNode::readReal(Reading reading)
{
    const bool single = isSingle();
    std::array<std::uint8_t, wordLength> buffer;
    const std::span used = std::span{buffer}.first(single ? sizeof(float) : sizeof(double));
    bytes.readOrdered(reading, used);
    const std::uint64_t word = wordOf(used, isBigEndian);
    return single ? std::bit_cast<float>(static_cast<std::uint32_t>(word)) : std::bit_cast<double>(word);
}

void FloatRegNode::writeReal(double value)
{
    const bool single = isSingle();
    const auto narrow = static_cast<float>(value);
    if (single && std::isinf(narrow) && !std::isinf(value))
        fail<OutOfRangeException>(withUnit(value) + " does not fit into its 4 bytes, which take " +
                                  withUnit(lowestOf<float>) + " to " + withUnit(highestOf<float>));
    std::array<std::uint8_t, wordLength> buffer{};
    const std::span used = std::span{buffer}.first(single ? sizeof(float) : sizeof(double));
    putWord(single ? std::bit_cast<std::uint32_t>(narrow) : std::bit_cast<std::uint64_t>(value), isBigEndian,
            used);
    bytes.writeOrdered(used);
}

Number FloatRegNode::readMinimum()
{
    return isSingle() ? double{lowestOf<float>} : lowestOf<double>;
}

Number FloatRegNode::readMaximum()
{
    return isSingle() ? double{highestOf<float>} : highestOf<double>;
}

} // namespace GenApi_3_2_TVN
