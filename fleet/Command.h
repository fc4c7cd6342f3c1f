// SPDX-License-Identifier: MIT
// The user's own commands: a vault's client that hands out a secret, or that is told of a change. They run without a shell.
#pragma once

#include "Wipe.h"

#include <string>

namespace fleet {

/// Whether \p serial may stand in a command: letters, digits, ".", "_" and "-", and neither "-" nor "." first. A rogue
/// camera must not choose, by the serial number that it tells, what is run or whose secret it is sent.
bool isFitForCommand(const std::string &serial);

/// Whether \p command is given the serial number.
bool namesSerial(const std::string &command);

/// Why \p command can't be run, as a sentence; empty where it can, as far as that shows before it is.
std::string commandFault(const std::string &command);

struct CommandResult
{
    std::string
        failure; ///< why it did not end well, as a sentence without any of its output; empty where it did
    std::string firstLine; ///< of its output, without the line end. May be a secret: the caller's to wipe
};

enum class CommandKind
{
    Question, // given up when the run is interrupted
    Word      // of what has been done already: carried to its end
};

/// Runs \p command, split into words as QProcess::splitCommand does, each "{serial}" in them then replaced by \p serial;
/// 30 s at most. Its errors go to standard error; of its output the first 4096 bytes are looked at.
/// \param input  for its standard input
CommandResult runCommand(CommandKind kind, const std::string &command, const std::string &serial,
                         const std::string &input);

} // namespace fleet
