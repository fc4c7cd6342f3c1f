// SPDX-License-Identifier: MIT
#include "Shell.h"

QString byShell(const QString &posix, const QString & /*windows*/)
{
    return QStringLiteral("sh -c \"%1\"").arg(posix);
}
