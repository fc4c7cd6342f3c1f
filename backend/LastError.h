// SPDX-License-Identifier: MIT
// The producer's own words behind the line of a failed GenTL call.
#pragma once

#include <cstdint>
#include <memory>

namespace GenICam_Interfaces {
class GenTL_Interface;
}

/// Prints the text of the producer's last error on this thread, or that it could not be asked for.
/// \param gentl  by value, so that the producer stays loaded for the call
/// Thread: the one that saw the failure, right behind it; GenTL keeps the last error for each thread.
void reportLastError(std::shared_ptr<GenICam_Interfaces::GenTL_Interface> gentl);

/// Prints that a close failed, with the producer's words, and keeps the producer loaded until the process ends.
/// \param line  what to print, up to the code
/// \param code  its GC_ERROR
/// Thread: as for reportLastError.
void reportFailedClose(const std::shared_ptr<GenICam_Interfaces::GenTL_Interface> &gentl, const char *line,
                       std::int32_t code);
