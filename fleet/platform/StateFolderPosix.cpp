// SPDX-License-Identifier: MIT
#include "StateFolder.h"

#include <QDir>

namespace fleet::platform {

QString stateFolder()
{
    const QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    return QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + QStringLiteral("/.local/state");
}

} // namespace fleet::platform
