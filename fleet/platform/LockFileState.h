// SPDX-License-Identifier: MIT
// Whether a lock file is held by a process, of whichever user. Each platform has a source of its own.
#pragma once

#include <QString>

namespace fleet::platform {

enum class LockFileState
{
    Held,      // by a process that runs
    Left,      // by nobody, or it is not there
    Unreadable // so that it can't be told
};

LockFileState lockFileState(const QString &path);

} // namespace fleet::platform
