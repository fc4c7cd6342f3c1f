// SPDX-License-Identifier: MIT
// The baseline of a start: a window of Qt's with nothing in it.
#include "FirstSight.h"

#include <QMainWindow>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QMainWindow window;
    const FirstSight firstSight(window);
    window.show();
    return QApplication::exec();
}
