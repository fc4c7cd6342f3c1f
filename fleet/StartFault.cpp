// SPDX-License-Identifier: MIT
#include "StartFault.h"

#include <QProcess>
#include <QString>

namespace fleet {

std::string startFault(QProcess &process, int patienceMs)
{
    if (!process.waitForStarted(patienceMs))
        return process.errorString().toStdString();
    if (process.processId() > 0)
        return {};
    process.waitForFinished(); // at once, and leaves it not running: nothing is killed any more
    return "the system allows no further process";
}

} // namespace fleet
