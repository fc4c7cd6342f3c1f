// SPDX-License-Identifier: MIT
// Nodes with a floating value: Float, FloatReg, SwissKnife and Converter.
#pragma once

#include "IBase.h"

namespace GenApi_3_2_TVN {

/// Errors and arguments as for IInteger.
class IFloat : virtual public IBase
{
public:
    virtual double GetValue(bool verify = false, bool ignoreCache = false) = 0;
    virtual void SetValue(double value, bool verify = true) = 0;
    virtual double GetMin() = 0;
    virtual double GetMax() = 0;
};

} // namespace GenApi_3_2_TVN
