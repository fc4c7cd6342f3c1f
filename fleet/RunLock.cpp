// SPDX-License-Identifier: MIT
#include "RunLock.h"

#include "Interrupted.h"
#include "LockFileState.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <stdexcept>
#include <thread>

namespace fleet {

namespace {

using platform::LockFileState;

QString inFolder(const QString &folder)
{
    return folder + QStringLiteral("/torvane.lock");
}

std::runtime_error unusable(const QString &path, const char *why)
{
    return std::runtime_error("The lock file '" + QDir::toNativeSeparators(path).toStdString() + "' " + why);
}

} // namespace

RunLock::RunLock() : RunLock(platform::lockFolder()) {}

RunLock::RunLock(const QString &systemFolder)
    : path(inFolder(QFileInfo(systemFolder).isWritable() ? systemFolder : QDir::tempPath())),
      elsewhere(inFolder(path == inFolder(systemFolder) ? QDir::tempPath() : systemFolder)),
      file(path)
{
    file.setStaleLockTime(0);
}

bool RunLock::acquire(std::chrono::seconds patience)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!tryLock()) {
        throwIfInterrupted();
        if (!heldPath.isEmpty() && std::chrono::steady_clock::now() >= end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return true;
}

bool RunLock::tryLock()
{
    heldPath.clear();
    if (!file.tryLock(0)) {
        judgeOther();
        return false;
    }
    // Whoever else wants to run has to see that somebody does.
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    if (elsewhere == path || platform::lockFileState(elsewhere) != LockFileState::Held)
        return true;
    heldPath = elsewhere;
    file.unlock();
    return false;
}

void RunLock::judgeOther()
{
    if (file.error() != QLockFile::LockFailedError)
        throw unusable(path, "can't be made: is its folder there, and can you write to it?");
    switch (platform::lockFileState(path)) {
    case LockFileState::Held:
        heldPath = path;
        return;
    case LockFileState::Unreadable:
        throw unusable(path,
                       "belongs to another user and can't be read, so that a run of theirs may be going "
                       "on. If none is, have it removed.");
    case LockFileState::Left:
        if (!file.removeStaleLockFile() && QFileInfo::exists(path) &&
            platform::lockFileState(path) == LockFileState::Left)
            throw unusable(path,
                           "was left by a run of another user that has ended. Have them or root remove it.");
    }
}

std::string RunLock::holder() const
{
    const QString name = QDir::toNativeSeparators(heldPath);
    qint64 process = 0;
    QString host;
    QString program;
    if (!QLockFile(heldPath).getLockInfo(&process, &host, &program))
        return (QStringLiteral("It holds ") + name + QLatin1Char('.')).toStdString();
    return QStringLiteral("Process %1 (%2) on %3 holds %4.")
        .arg(process)
        .arg(program, host, name)
        .toStdString();
}

} // namespace fleet
