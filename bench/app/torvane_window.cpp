// SPDX-License-Identifier: MIT
// The start of torvane_gui, up to the first sight of its window.
#include "FirstSight.h"
#include "MainWindow.h"

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    MainWindow window;
    const FirstSight firstSight(window);
    window.show();
    return QApplication::exec();
}
