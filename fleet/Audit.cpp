// SPDX-License-Identifier: MIT
#include "Audit.h"

#include "Clock.h"
#include "Journal.h"
#include "JsonFields.h"
#include "Output.h"
#include "UsageError.h"
#include "UserName.h"

#include <QFileInfo>

namespace fleet {

Audit::Audit(const std::string &path, Action action, const QString &run)
    : file(QString::fromStdString(path)), action(action), run(run)
{
    if (path.empty())
        return;
    const bool isNew = !file.exists();
    // A pipe without a reader would be waited for, and a device keeps no line.
    if (!isNew && !QFileInfo(file).isFile())
        throw UsageError("The audit file '" + path + "' is no regular file.");
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        throw UsageError("The audit file '" + path +
                         "' can't be written: " + file.errorString().toStdString() + '.');
    if (isNew)
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

void Audit::tell(const Job &job)
{
    if (!file.isOpen())
        return;
    const CameraKey key(*job.camera);
    const QByteArray line =
        jsonLine({{QStringLiteral("time"), utcNow()},
                  {QStringLiteral("host"), hostName()},
                  {QStringLiteral("user"), platform::userName()},
                  {QStringLiteral("run"), run},
                  {QStringLiteral("serial"), key.serial},
                  {QStringLiteral("mac"), key.mac.isEmpty() ? QJsonValue() : QJsonValue(key.mac)},
                  {QStringLiteral("action"), QLatin1String(wordOf(action))},
                  {QStringLiteral("result"), QLatin1String(wordOf(job.outcome->result))},
                  {QStringLiteral("reason"),
                   job.outcome->reason ? QJsonValue(QLatin1String(wordOf(job.outcome->reason->code)))
                                       : QJsonValue()}});
    const qint64 end = file.size();
    if (file.write(line) == line.size())
        return;
    hasGap_ = true;
    complain("The audit file '" + file.fileName().toStdString() + "' can't be written: " +
             file.errorString().toStdString() + ". It lacks this line: " + line.trimmed().toStdString());
    file.resize(end); // the next line would be lost with what has got there of this one
}

} // namespace fleet
