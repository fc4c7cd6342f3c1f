// SPDX-License-Identifier: MIT
#include "StateFolder.h"

#include <QStandardPaths>

namespace fleet::platform {

QString stateFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation); // %LOCALAPPDATA%
}

} // namespace fleet::platform
