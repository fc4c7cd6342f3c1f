// SPDX-License-Identifier: MIT
// A failed GenTL call of a port: its text, and the code by which callers tell one failure from another.
#pragma once

#include "GenTL.h"

#include <stdexcept>
#include <string>

namespace GenICam_Interfaces {

class PortFailure : public std::runtime_error
{
public:
    PortFailure(const std::string &text, GC_ERROR code) : std::runtime_error(text), code_(code) {}

    /// What the call returned, whatever the producer says of its last error.
    GC_ERROR code() const noexcept { return code_; }

private:
    GC_ERROR code_;
};

} // namespace GenICam_Interfaces
