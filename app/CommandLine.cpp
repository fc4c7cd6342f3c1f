// SPDX-License-Identifier: MIT
#include "CommandLine.h"

#include <string_view>

namespace {

constexpr const char *versionText = "torvane_gui 1.0.0.0\n";

constexpr const char *helpText = R"(Usage: torvane_gui [QT-OPTION...]

Shows industrial cameras in a window, and locks and unlocks them, changes their passwords and resets them.

  --help      print this help and exit
  --version   print the version and exit

The options of Qt programs are taken, such as -style and -platform.

Environment:
  GENICAM_GENTL64_PATH      folders with GenTL producers (*.cti), searched after the current folder
  DISPLAY, WAYLAND_DISPLAY  the display that the window is shown on

More: man torvane_gui. For terminals and scripts: torvane_console.
)";

} // namespace

const char *commandLineAnswer(int argc, const char *const *argv)
{
    for (int place = 1; place < argc; ++place) {
        const std::string_view argument = argv[place];
        if (argument == "--help")
            return helpText;
        if (argument == "--version")
            return versionText;
    }
    return nullptr;
}
