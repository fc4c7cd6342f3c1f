// SPDX-License-Identifier: MIT
#include "CommandLine.h"

#include "ProducerFiles.h"

#include <string_view>

namespace {

constexpr const char *versionText = "torvane_gui 1.0.0.0\n";

constexpr const char *helpStart = R"(Usage: torvane_gui [QT-OPTION...]

Shows industrial cameras in a window, and locks and unlocks them, changes their passwords and resets them.

  --help      print this help and exit
  --version   print the version and exit

The options of Qt programs are taken, such as -style and -platform.

Environment:
  GENICAM_GENTL64_PATH      folders with GenTL producers (*.cti), separated by )";

constexpr const char *helpEnd = R"(.
                            They are searched after the current folder.
  DISPLAY, WAYLAND_DISPLAY  the display that the window is shown on, but for Windows

More: man torvane_gui. For terminals and scripts: torvane_console.
)";

} // namespace

std::optional<std::string> commandLineAnswer(int argc, const char *const *argv)
{
    for (int place = 1; place < argc; ++place) {
        const std::string_view argument = argv[place];
        if (argument == "--help")
            return helpStart + environmentSeparators() + helpEnd;
        if (argument == "--version")
            return versionText;
    }
    return std::nullopt;
}
