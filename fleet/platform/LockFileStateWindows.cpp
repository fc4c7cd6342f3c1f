// SPDX-License-Identifier: MIT
// A lock file that is held can't be removed here, and QLockFile removes any other by itself: what has stayed is held.
#include "LockFileState.h"

namespace fleet::platform {

LockFileState lockFileState(const QString &)
{
    return LockFileState::Held;
}

} // namespace fleet::platform
