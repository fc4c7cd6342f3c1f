// SPDX-License-Identifier: MIT
// torvane_gui: one window over the cameras. It has no options of its own; the arguments are Qt's.
#include "Appearance.h"
#include "MainWindow.h"
#include "ProcessStart.h"

#include <QApplication>
#include <iostream>

int main(int argc, char *argv[])
{
    prepareProcess();

    // The back end asks on standard input for a password that is empty. A window started from a terminal must not
    // wait for that terminal: whatever asks meets the end of the input and cancels.
    std::cin.setstate(std::ios_base::eofbit);

    prepareAppearance();
    QApplication application(argc, argv);
    useLightPalette();
    MainWindow window;
    window.show();
    return QApplication::exec();
}
