// SPDX-License-Identifier: MIT
// Nodes of the kind EnumEntry: one named value of an enumeration.
#pragma once

#include "IBase.h"
#include "gcstring.h"

#include <cstdint>

namespace GenApi_3_2_TVN {

class IEnumEntry : virtual public IBase
{
public:
    virtual std::int64_t GetValue() = 0;
    /// The name for users: what the description states as Symbolic, else its name.
    virtual GenICam_3_2_TVN::gcstring GetSymbolic() const = 0;
    /// The value as a physical quantity; without one in the description, GetValue().
    virtual double GetNumericValue() = 0;
    /// Whether the device leaves this value by itself once it was written.
    virtual bool IsSelfClearing() = 0;
};

} // namespace GenApi_3_2_TVN
