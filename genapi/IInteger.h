// SPDX-License-Identifier: MIT
// Nodes with a signed 64-bit value: Integer, IntReg, MaskedIntReg, IntSwissKnife, IntConverter, StructEntry.
#pragma once

#include "IBase.h"

#include <cstdint>

namespace GenApi_3_2_TVN {

/// All operations throw a GenericException that names the node when the description or the access mode
/// forbids the call, and pass on what the port throws. The access mode is checked with verify and without.
class IInteger : virtual public IBase
{
public:
    /// \param verify       check that the value lies between GetMin() and GetMax()
    /// \param ignoreCache  read from the device also what is cached
    virtual std::int64_t GetValue(bool verify = false, bool ignoreCache = false) = 0;
    /// \param verify  check range and increment first; without, only what the register can't hold is refused
    virtual void SetValue(std::int64_t value, bool verify = true) = 0;
    virtual std::int64_t GetMin() = 0;
    virtual std::int64_t GetMax() = 0;
    /// At least 1; values are GetMin() plus a multiple of it.
    virtual std::int64_t GetInc() = 0;
};

} // namespace GenApi_3_2_TVN
