// SPDX-License-Identifier: MIT
// The kinds IntReg, MaskedIntReg and StructEntry: an integer in a register of 1 to 8 bytes, or in some of its bits.
#pragma once

#include "IntegerValueNode.h"
#include "RegisterAccess.h"

#include <cstddef>

namespace GenApi_3_2_TVN {

class IntRegNode : public IntegerValueNode, public RegisterAccess
{
public:
    IntRegNode(NodeMap &nodeMap, pugi::xml_node element);

protected:
    std::int64_t readInteger(Reading reading) override;
    void writeInteger(std::int64_t value) override;
    Number readMinimum() override { return lowest(currentField()); }
    Number readMaximum() override { return highest(currentField()); }
    EAccessMode ownAccessMode(AccessQuestion question) const override { return bytes.accessMode(question); }

private:
    /// A run of bits, counted from the least significant one.
    struct Field
    {
        unsigned shift;
        unsigned width; ///< 1 to 64
        std::uint64_t mask() const { return ~std::uint64_t{0} >> (64 - width); }
    };

    Field field(std::size_t byteCount) const;
    Field currentField() const;
    std::size_t byteCount() const;
    std::uint64_t readWord(Reading reading, std::size_t byteCount);
    bool fits(std::int64_t value, Field field) const;
    [[noreturn]] void refuse(std::int64_t value, Field field) const;
    std::int64_t lowest(Field field) const;
    std::int64_t highest(Field field) const;

    bool isSigned;
    bool isBigEndian;
    bool isMasked;
    std::int64_t firstBit = 0; ///< as the description counts; of a masked register only
    std::int64_t lastBit = 0;
};

} // namespace GenApi_3_2_TVN
