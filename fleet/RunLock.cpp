// SPDX-License-Identifier: MIT
#include "RunLock.h"

#include "Interrupted.h"

#include <QDir>
#include <QFileInfo>
#include <thread>

namespace fleet {

namespace {

QString lockFolder()
{
    const QString runLock = QStringLiteral("/run/lock");
    return QFileInfo(runLock).isWritable() ? runLock : QDir::tempPath();
}

} // namespace

RunLock::RunLock()
    : path(lockFolder() + QStringLiteral("/torvane.lock")), file(std::make_unique<QLockFile>(path))
{
    file->setStaleLockTime(0);
}

bool RunLock::acquire(std::chrono::seconds patience)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!file->tryLock(0)) {
        throwIfInterrupted();
        if (std::chrono::steady_clock::now() >= end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return true;
}

std::string RunLock::holder() const
{
    const QString name = QDir::toNativeSeparators(path);
    qint64 process = 0;
    QString host;
    QString program;
    if (!file->getLockInfo(&process, &host, &program))
        return (QStringLiteral("The lock file ") + name + QStringLiteral(" can't be made or read."))
            .toStdString();
    return QStringLiteral("Process %1 (%2) on %3 holds %4.")
        .arg(process)
        .arg(program, host, name)
        .toStdString();
}

} // namespace fleet
