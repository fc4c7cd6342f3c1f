// SPDX-License-Identifier: MIT
// Nodes with a floating value: Float, FloatReg, SwissKnife and Converter.
#pragma once

#include "IBase.h"

namespace GenApi_3_2_TVN {

/// Errors and arguments as for IInteger. Values are IEEE 754: a formula that divides by zero gives infinity, and a
/// register may hold what is no number; with verify, neither passes.
/// A Float over an enumeration has the NumericValue of the entry, and writes the nearest one.
class IFloat : virtual public IBase
{
public:
    virtual double GetValue(bool verify = false, bool ignoreCache = false) = 0;
    /// \param verify  check the range first. The increment is not checked: few fractions are met exactly.
    virtual void SetValue(double value, bool verify = true) = 0;
    virtual double GetMin() = 0;
    virtual double GetMax() = 0;
    virtual bool HasInc() = 0;
    /// \throws PropertyException  it has none
    virtual double GetInc() = 0;
};

} // namespace GenApi_3_2_TVN
