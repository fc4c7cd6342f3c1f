// SPDX-License-Identifier: MIT
#include "StateFolder.h"

#include <QDir>
#include <QStandardPaths>

namespace fleet::platform {

QString stateFolder()
{
    const QString local = QDir::fromNativeSeparators(qEnvironmentVariable("LOCALAPPDATA"));
    return QDir::isAbsolutePath(local)
               ? local
               : QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}

} // namespace fleet::platform
