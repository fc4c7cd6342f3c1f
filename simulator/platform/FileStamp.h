// SPDX-License-Identifier: MIT
// What tells whether a file has changed, as finely as the system keeps it: the standard library of some compilers rounds
// times to whole seconds. Each platform has a source of its own.
#pragma once

#include <cstdint>
#include <string>

namespace simulator {

struct FileStamp
{
    std::int64_t time = 0; ///< of the last change, in the system's unit
    std::uint64_t size = 0;
    std::uint64_t number = 0; ///< another one for a file that has taken the place; 0 where there is none

    bool operator==(const FileStamp &) const = default;
};

/// \throws std::system_error  there is no such file, or it can't be looked at
FileStamp fileStamp(const std::string &path);

} // namespace simulator
