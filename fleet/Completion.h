// SPDX-License-Identifier: MIT
// Completions for shells, made from the description of the options, so that they never fall behind it.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace fleet {

/// \param shell  "bash" or "zsh"
std::string completionScript(const CLI::App &app, const std::string &shell);

} // namespace fleet
