// SPDX-License-Identifier: MIT
#include "ChangedHook.h"

#include "Command.h"
#include "Journal.h"
#include "JsonFields.h"

namespace fleet {

std::string runChangedHook(const std::string &command, const Job &job, const QString &run)
{
    const CameraKey key(*job.camera);
    const QByteArray line =
        jsonLine({{QStringLiteral("serial"), key.serial},
                  {QStringLiteral("mac"), key.mac.isEmpty() ? QJsonValue() : QJsonValue(key.mac)},
                  {QStringLiteral("run"), run},
                  {QStringLiteral("result"), QLatin1String(wordOf(job.outcome->result))},
                  {QStringLiteral("in_force"),
                   QLatin1String(wordOf(job.outcome->inForce.value_or(InForce::Unknown)))}});
    return runCommand(CommandKind::Word, command, job.camera->serial, line.toStdString()).failure;
}

} // namespace fleet
