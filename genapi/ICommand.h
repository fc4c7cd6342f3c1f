// SPDX-License-Identifier: MIT
// Nodes of the kind Command.
#pragma once

#include "IBase.h"

namespace GenApi_3_2_TVN {

/// Errors and arguments as for IInteger.
class ICommand : virtual public IBase
{
public:
    /// Writes the command value and does not wait for the end.
    virtual void Execute(bool verify = true) = 0;
    /// Whether the device has taken the command value away, asked of the device itself. A command whose value
    /// can't be read back is done at once.
    virtual bool IsDone(bool verify = true) = 0;
};

} // namespace GenApi_3_2_TVN
