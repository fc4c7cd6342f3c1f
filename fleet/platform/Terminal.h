// SPDX-License-Identifier: MIT
// The terminal, where there is one: its width, and questions to the person before it. Each platform has a source of its
// own.
#pragma once

#include "Secret.h"

#include <optional>
#include <string>

namespace fleet::platform {

/// In columns; 0 where standard output is no terminal or does not tell.
int outputWidth();

/// Whether standard error is a terminal: then somebody sees progress.
bool hasErrorTerminal();

/// Whether a question can be asked: standard input and standard error are terminals.
bool canAsk();

/// Shows \p prompt on standard error and reads a line from the terminal without echo.
/// \return nothing at the end of the input, for an empty line, and after an interruption
std::optional<Secret> askSecret(const std::string &prompt);

/// The same with echo, for what is no secret.
std::optional<std::string> askLine(const std::string &prompt);

} // namespace fleet::platform
