// SPDX-License-Identifier: MIT
// Nodes of the kind Boolean.
#pragma once

#include "IBase.h"

namespace GenApi_3_2_TVN {

/// Errors and arguments as for IInteger.
class IBoolean : virtual public IBase
{
public:
    /// True when the inner value is the node's OnValue; every other value is false.
    virtual bool GetValue(bool verify = false, bool ignoreCache = false) = 0;
    virtual void SetValue(bool value, bool verify = true) = 0;
};

} // namespace GenApi_3_2_TVN
