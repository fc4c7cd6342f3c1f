// SPDX-License-Identifier: MIT
// Commands for torvane that need the system's shell. Each platform has a source of its own.
#pragma once

#include <QString>

/// \p posix as a command of sh, or \p windows as one of cmd; neither has quotation marks.
QString byShell(const QString &posix, const QString &windows);

/// Prints a line.
inline QString echo(const QString &text)
{
    return byShell(QStringLiteral("echo ") + text, QStringLiteral("echo ") + text);
}
