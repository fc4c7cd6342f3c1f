// SPDX-License-Identifier: MIT
// Nodes with a text: String and StringReg.
#pragma once

#include "IBase.h"
#include "gcstring.h"

#include <cstdint>

namespace GenApi_3_2_TVN {

/// Errors and arguments as for IInteger. Texts are the device's bytes; no encoding is assumed.
class IString : virtual public IBase
{
public:
    /// The text of a register ends at its first zero byte or at its length.
    virtual GenICam_3_2_TVN::gcstring GetValue(bool verify = false, bool ignoreCache = false) = 0;
    /// A register is filled with zeros behind the text. A text longer than GetMaxLength() is refused.
    virtual void SetValue(const GenICam_3_2_TVN::gcstring &value, bool verify = true) = 0;
    /// In bytes, without a closing zero.
    virtual std::int64_t GetMaxLength() = 0;
};

} // namespace GenApi_3_2_TVN
