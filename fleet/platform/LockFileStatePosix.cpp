// SPDX-License-Identifier: MIT
#include "LockFileState.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>

namespace fleet::platform {

// QLockFile holds a lock of the system on its file (flock), which ends with its process. It writes to the file when it has
// that lock: an empty one is not touched, since its process may be just about to take it.
LockFileState lockFileState(const QString &path)
{
    const int descriptor =
        open(QFile::encodeName(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return errno == ENOENT ? LockFileState::Left : LockFileState::Unreadable;
    struct stat status = {};
    const bool isEmpty = fstat(descriptor, &status) == 0 && status.st_size == 0;
    const bool isHeld = !isEmpty && flock(descriptor, LOCK_SH | LOCK_NB) != 0;
    close(descriptor); // and with it the lock
    return isHeld ? LockFileState::Held : LockFileState::Left;
}

} // namespace fleet::platform
