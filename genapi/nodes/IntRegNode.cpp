// SPDX-License-Identifier: MIT
// See the header. A description counts bits from the least significant one in a little-endian register and
// from the most significant one in a big-endian register; here they are always counted from the least
// significant one.
#include "IntRegNode.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::OutOfRangeException;
using GenICam_3_2_TVN::PropertyException;

namespace {

constexpr std::size_t largestLength = 8;

/// Whether the child \p tag says \p yes rather than \p no, which it also means when it is missing.
bool says(const Node &node, const char *tag, std::string_view yes, std::string_view no)
{
    const std::optional<std::string> text = node.childText(tag);
    if (!text || *text == no)
        return false;
    if (*text == yes)
        return true;
    node.fail<PropertyException>(std::string{tag} + ": '" + *text + "' is neither " + std::string{yes} +
                                 " nor " + std::string{no});
}

} // namespace

IntRegNode::IntRegNode(NodeMap &nodeMap, pugi::xml_node element)
    : IntegerValueNode{nodeMap, element},
      bytes{*this, element},
      isSigned{says(*this, "Sign", "Signed", "Unsigned")},
      isBigEndian{says(*this, "Endianess", "BigEndian", "LittleEndian")},
      isMasked{std::string_view{element.name()} == "MaskedIntReg"}
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
    if (count > largestLength)
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

std::uint64_t IntRegNode::word(std::span<const std::uint8_t> registerBytes) const
{
    std::uint64_t assembled = 0;
    const std::size_t count = registerBytes.size();
    for (std::size_t place = 0; place < count; ++place)
        assembled = (assembled << 8) | registerBytes[isBigEndian ? place : count - 1 - place];
    return assembled;
}

std::int64_t IntRegNode::readInteger(Reading reading)
{
    const Field bits = currentField();
    std::uint64_t value = (word(bytes.read(reading)) >> bits.shift) & bits.mask();
    const bool isNegative = isSigned && ((value >> (bits.width - 1)) & 1) != 0;
    if (isNegative)
        value |= ~bits.mask();
    return static_cast<std::int64_t>(value);
}

/// The bits around a field come fresh from the device, which may have changed them since. Those of a register
/// that can't be read are written as zero.
void IntRegNode::writeInteger(std::int64_t value)
{
    const std::size_t count = byteCount();
    const Field bits = field(count);
    if (!fits(value, bits))
        fail<OutOfRangeException>(std::to_string(value) + " does not fit into " + std::to_string(bits.width) +
                                  " bits");
    std::uint64_t assembled = 0;
    if (bits.width < count * 8 && !bytes.isWriteOnly())
        assembled = word(bytes.read({.ignoreCache = true})) & ~(bits.mask() << bits.shift);
    assembled |= (static_cast<std::uint64_t>(value) & bits.mask()) << bits.shift;

    std::array<std::uint8_t, largestLength> buffer{};
    for (std::size_t place = 0; place < count; ++place)
        buffer[isBigEndian ? count - 1 - place : place] = static_cast<std::uint8_t>(assembled >> (8 * place));
    bytes.write(std::span{buffer}.first(count));
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

std::int64_t IntRegNode::readMinimum()
{
    return lowest(currentField());
}

std::int64_t IntRegNode::readMaximum()
{
    return highest(currentField());
}

} // namespace GenApi_3_2_TVN
