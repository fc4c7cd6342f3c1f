// SPDX-License-Identifier: MIT
// torvane_gui: one window over the cameras. But for --help and --version the arguments are Qt's.
#include "Appearance.h"
#include "CommandLine.h"
#include "DisplayCheck.h"
#include "MainWindow.h"
#include "ProcessStart.h"

#include <QApplication>
#include <iostream>
#include <optional>
#include <string>

int main(int argc, char *argv[])
{
    prepareProcess();
    if (const std::optional<std::string> answer = commandLineAnswer(argc, argv)) {
        std::cout << *answer << std::flush;
        return 0;
    }

    // The back end asks on standard input for a password that is empty. A window started from a terminal must not
    // wait for that terminal: whatever asks meets the end of the input and cancels.
    std::cin.setstate(std::ios_base::eofbit);

    std::optional<DisplayCheck> displayCheck(std::in_place);
    prepareAppearance(argc, argv);
    QApplication application(argc, argv);
    displayCheck.reset();
    useLightPalette();
    MainWindow window;
    window.show();
    return QApplication::exec();
}
