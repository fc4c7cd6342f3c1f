// SPDX-License-Identifier: MIT
#include "Clock.h"

#include <QDateTime>
#include <QRandomGenerator>
#include <QSysInfo>

namespace fleet {

QString utcNow()
{
    return QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
}

QString newRunId()
{
    return QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd'T'hhmmss'Z'")) +
           QStringLiteral("-%1").arg(QRandomGenerator::system()->bounded(0x1000000), 6, 16, QLatin1Char('0'));
}

QString hostName()
{
    return QSysInfo::machineHostName();
}

} // namespace fleet
