// SPDX-License-Identifier: MIT
// The counts of a check for Prometheus: a file in its text format, which the textfile collector of a node exporter reads.
#pragma once

#include "Camera.h"

#include <cstdint>
#include <string>
#include <vector>

namespace fleet {

/// \param cameras  those that the check counted
/// \param countedAt  when all of them were counted, in seconds since 1970; 0 where that could not be done, so that whoever
///     watches the age is told of a check that fails as of one that does not run
std::string metricsText(const std::vector<const Camera *> &cameras, std::int64_t countedAt);

/// Replaces the file \p path as a whole, readable for all, since the collector is another user: who reads it sees the old
/// one or the new one.
/// \throws std::runtime_error  it can't be written; the text is a sentence
void writeMetrics(const std::string &path, const std::string &text);

} // namespace fleet
