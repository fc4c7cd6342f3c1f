// SPDX-License-Identifier: MIT
// How the simulator refuses a call from within: the code that the function answers, and the text that
// GCGetLastError then tells. It ends at the C boundary (Call.h).
#pragma once

#include "GenTL.h"

#include <stdexcept>
#include <string>

namespace simulator {

class GenTLError : public std::runtime_error
{
public:
    GenTLError(GC_ERROR code, const std::string &text) : std::runtime_error(text), code_(code) {}

    GC_ERROR code() const { return code_; }

private:
    GC_ERROR code_;
};

/// \throws GenTLError  GC_ERR_INVALID_PARAMETER, when the caller gave no place for an output or a size
inline void require(const void *pointer, const char *name)
{
    if (!pointer)
        throw GenTLError(GC_ERR_INVALID_PARAMETER, std::string(name) + " is null");
}

} // namespace simulator
