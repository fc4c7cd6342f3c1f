// SPDX-License-Identifier: MIT
#include "LockFileState.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <ctime>

namespace fleet::platform {

namespace {

constexpr time_t makingSeconds = 2; // longer than a process takes from the file to its lock

} // namespace

// QLockFile holds a lock of the system on its file (flock), which ends with its process, and writes to the file when it has
// that lock. So the lock of an empty one is not tried: its process may be just about to take it.
LockFileState lockFileState(const QString &path)
{
    const int descriptor =
        open(QFile::encodeName(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return errno == ENOENT ? LockFileState::Left : LockFileState::Unreadable;
    struct stat status = {};
    const bool isEmpty = fstat(descriptor, &status) == 0 && status.st_size == 0;
    const bool isHeld =
        isEmpty ? time(nullptr) - status.st_mtime < makingSeconds : flock(descriptor, LOCK_SH | LOCK_NB) != 0;
    close(descriptor); // and with it the lock
    return isHeld ? LockFileState::Held : LockFileState::Left;
}

QString lockFolder()
{
    return QStringLiteral("/run/lock");
}

} // namespace fleet::platform
