// SPDX-License-Identifier: MIT
// The command line of torvane as plain values, and what is said about it: help, version and the completions of shells come
// from the same description of the options.
#pragma once

#include "Request.h"
#include "UsageError.h"

#include <optional>
#include <string>

namespace fleet {

/// The options make no sense: the help tells which do.
class CommandLineError : public UsageError
{
    using UsageError::UsageError;
};

struct CommandLine
{
    Request request;
    bool isDoctor = false; ///< then of the request libraries, json and what the producers tell count
    /// The text that --help, --version or completion asks for. When it is there, nothing else is to be done.
    std::optional<std::string> answer;
};

/// Reads the command line. No camera is touched; the file of --from is read.
/// \throws UsageError  it asks for nothing, or for what does not go together
/// \throws Interrupted
CommandLine parseCommandLine(int argc, const char *const *argv);

/// Whether the last line of the output is to be a summary in JSON, whatever becomes of the run: one of the commands that
/// act was called with --json, even if the rest of the line is refused.
bool asksForSummary(int argc, const char *const *argv);

} // namespace fleet
