// SPDX-License-Identifier: MIT
// Nodes of the kind Register, and the bytes behind all kinds that lie in a register.
#pragma once

#include "IBase.h"

#include <cstdint>

namespace GenApi_3_2_TVN {

/// Errors and arguments as for IInteger. Bytes are as the device has them, in no other order.
class IRegister : virtual public IBase
{
public:
    /// \param bytes   \p length bytes, the caller's
    /// \param length  the register's
    virtual void Set(const std::uint8_t *bytes, std::int64_t length, bool verify = true) = 0;
    /// \param bytes   receives \p length bytes; the caller's
    /// \param length  the register's
    virtual void Get(std::uint8_t *bytes, std::int64_t length, bool verify = false,
                     bool ignoreCache = false) = 0;
    /// In bytes, at least 1.
    virtual std::int64_t GetLength() = 0;
    /// In the device's register space; from 2^63 up the negative number of the same bits.
    virtual std::int64_t GetAddress() = 0;
};

} // namespace GenApi_3_2_TVN
