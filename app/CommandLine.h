// SPDX-License-Identifier: MIT
// The two options that torvane_gui answers itself. All other arguments are Qt's.
#pragma once

/// \return what to print instead of showing a window, for --help and --version; null when neither is among the arguments
const char *commandLineAnswer(int argc, const char *const *argv);
