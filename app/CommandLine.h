// SPDX-License-Identifier: MIT
// The two options that torvane_gui answers itself. All other arguments are Qt's.
#pragma once

#include <optional>
#include <string>

/// \return what to print instead of showing a window, for --help and --version; nothing when neither is among the arguments
std::optional<std::string> commandLineAnswer(int argc, const char *const *argv);
