// SPDX-License-Identifier: MIT
// The command line of torvane as plain values, and what is said about it: help, version and the completions of shells come
// from the same description of the options.
#pragma once

#include "Request.h"

#include <optional>
#include <string>

namespace fleet {

struct CommandLine
{
    Request request;
    bool isDoctor = false; ///< then of the request only libraries and json count
    /// The text that --help, --version or completion asks for. When it is there, nothing else is to be done.
    std::optional<std::string> answer;
};

/// Reads the command line. No camera is touched; the file of --from is read.
/// \throws UsageError  it asks for nothing, or for what does not go together
CommandLine parseCommandLine(int argc, const char *const *argv);

} // namespace fleet
