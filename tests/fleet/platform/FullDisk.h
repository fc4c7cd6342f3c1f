// SPDX-License-Identifier: MIT
// A disk without room. Each platform has a source of its own.
#pragma once

#include <cstdint>

/// From now on no file of this process grows beyond \p bytes.
void limitFiles(std::int64_t bytes);
