// SPDX-License-Identifier: MIT
// Where the programs of all users keep lock files, and whether such a file is held by a process, of whichever user. Each
// platform has a source of its own.
#pragma once

#include <QString>

namespace fleet::platform {

enum class LockFileState
{
    Held,      // by a process that runs, or just being made
    Left,      // by nobody, or it is not there
    Unreadable // so that it can't be told
};

LockFileState lockFileState(const QString &path);

/// /run/lock; on Windows the folder for the data of all users, %ProgramData%. Not all users may write there.
QString lockFolder();

} // namespace fleet::platform
