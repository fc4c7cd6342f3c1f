// SPDX-License-Identifier: MIT
// What ends a run that was interrupted before its first camera was written: status 130.
#pragma once

#include "Interruption.h"

#include <exception>

namespace fleet {

class Interrupted : public std::exception
{
public:
    const char *what() const noexcept override
    {
        return "The run was interrupted before anything was written.";
    }
};

/// \throws Interrupted  a signal that interrupts has come
inline void throwIfInterrupted()
{
    if (platform::isInterrupted())
        throw Interrupted();
}

} // namespace fleet
