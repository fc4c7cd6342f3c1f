// SPDX-License-Identifier: MIT
// A disk without room. Each platform has a source of its own.
#pragma once

#include <cstdint>

/// From now on no file of this process, and of those that it starts, grows beyond \p bytes.
/// \return false where the system has no such limit
bool limitFiles(std::int64_t bytes);
