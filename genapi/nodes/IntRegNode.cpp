// SPDX-License-Identifier: MIT
// See the header. A description counts bits from the least significant one in a little-endian register and
// from the most significant one in a big-endian register; here they are always counted from the least
// significant one. A port that swaps bytes changes where they lie, not how the bits of the number are counted.
#include "IntRegNode.h"

#include "ByteOrder.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::OutOfRangeException;
using GenICam_3_2_TVN::PropertyException;

IntRegNode::IntRegNode(NodeMap &nodeMap, pugi::xml_node element)
    : IntegerValueNode{nodeMap, element},
      RegisterAccess{this},
      isSigned{childSays("Sign", "Signed", "Unsigned")},
      isBigEndian{childSays("Endianess", "BigEndian", "LittleEndian")},
      isMasked{std::string_view{element.name()} != "IntReg"}
{
    if (!isMasked)
        return;
    const std::optional<std::int64_t> bit = childInteger("Bit");
    const std::optional<std::int64_t> lsb = bit ? bit : childInteger("LSB");
    const std::optional<std::int64_t> msb = bit ? bit : childInteger("MSB");
    if (!lsb || !msb)
        fail<PropertyException>("a masked register without Bit, or LSB and MSB");
    firstBit = std::min(*lsb, *msb);
    lastBit = std::max(*lsb, *msb);
}

std::size_t IntRegNode::byteCount() const
{
    const auto count = static_cast<std::size_t>(bytes.readLength());
    if (count > wordLength)
        fail<PropertyException>("an integer in a register of " + std::to_string(count) +
                                " bytes; possible are 1 to 8");
    return count;
}

IntRegNode::Field IntRegNode::field(std::size_t count) const
{
    const auto bitCount = static_cast<std::int64_t>(count * 8);
    if (!isMasked)
        return {0, static_cast<unsigned>(bitCount)};
    if (firstBit < 0 || lastBit >= bitCount)
        fail<PropertyException>("bits " + std::to_string(firstBit) + " to " + std::to_string(lastBit) +
                                " in a register of " + std::to_string(count) + " bytes");
    return {static_cast<unsigned>(isBigEndian ? bitCount - 1 - lastBit : firstBit),
            static_cast<unsigned>(lastBit - firstBit + 1)};
}

IntRegNode::Field IntRegNode::currentField() const
{
    return field(byteCount());
}

std::int64_t IntRegNode::readInteger(Reading reading)
{
    const std::size_t count = byteCount();
    const Field bits = field(count);
    std::uint64_t value = (readWord(reading, count) >> bits.shift) & bits.mask();
    const bool isNegative = isSigned && ((value >> (bits.width - 1)) & 1) != 0;
    if (isNegative)
        value |= ~bits.mask();
    return static_cast<std::int64_t>(value);
}

std::uint64_t IntRegNode::readWord(Reading reading, std::size_t count)
{
    std::array<std::uint8_t, wordLength> buffer;
    const std::span used = std::span{buffer}.first(count);
    bytes.readOrdered(reading, used);
    return wordOf(used, isBigEndian);
}

/// The bits around a field come fresh from the device, which may have changed them since. Those of a register
/// that can't be read are written as zero.
void IntRegNode::writeInteger(std::int64_t value)
{
    const std::size_t count = byteCount();
    const Field bits = field(count);
    if (!fits(value, bits))
        refuse(value, bits);
    std::uint64_t assembled = 0;
    if (bits.width < count * 8 && !bytes.isWriteOnly())
        assembled = readWord({.ignoreCache = true}, count) & ~(bits.mask() << bits.shift);
    assembled |= (static_cast<std::uint64_t>(value) & bits.mask()) << bits.shift;

    std::array<std::uint8_t, wordLength> buffer{};
    const std::span used = std::span{buffer}.first(count);
    putWord(assembled, isBigEndian, used);
    bytes.writeOrdered(used);
}

void IntRegNode::refuse(std::int64_t value, Field bits) const
{
    const bool isOne = bits.width == 1;
    fail<OutOfRangeException>(withUnit(value) + " does not fit into its " + std::to_string(bits.width) +
                              (isOne ? " bit, which takes " : " bits, which take ") + withUnit(lowest(bits)) +
                              " to " + withUnit(highest(bits)));
}

/// 64 bits without a sign take every number: from 2^63 up it arrives as the negative one of the same bits.
bool IntRegNode::fits(std::int64_t value, Field bits) const
{
    return bits.width == 64 || (value >= lowest(bits) && value <= highest(bits));
}

std::int64_t IntRegNode::lowest(Field bits) const
{
    return isSigned ? -static_cast<std::int64_t>(bits.mask() >> 1) - 1 : 0;
}

std::int64_t IntRegNode::highest(Field bits) const
{
    const bool losesTopBit = isSigned || bits.width == 64;
    return static_cast<std::int64_t>(losesTopBit ? bits.mask() >> 1 : bits.mask());
}

} // namespace GenApi_3_2_TVN
