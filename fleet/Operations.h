// SPDX-License-Identifier: MIT
// What a run does to one camera that is open with control access. A camera reports no wrong password: each outcome is
// proved by a read of the lock state that worked, and what cannot be proved is told so. Each operation leaves in the camera
// what is known of its lock and its password then.
#pragma once

#include "Camera.h"
#include "Outcome.h"
#include "Secret.h"

namespace fleet {

// The lock state of each has just been read.

/// Does \p current open the lock? A locked camera is locked again.
/// \param relock  lock an unlocked one to find out; a wrong password then leaves it locked
Outcome verify(Camera &camera, const Secret &current, bool relock);

Outcome unlock(Camera &camera, const Secret &current);
Outcome lock(Camera &camera);

/// How a change goes about a camera.
struct ChangeRules
{
    bool relock = false;      ///< lock an unlocked camera to prove the old password
    bool tryNewFirst = false; ///< a run that was ended may have set it already, and have left the lock open
    Lock wasBefore = Lock::Unknown; ///< the lock to be put back; unknown: as it is found
};

/// Proves \p old, sets \p next, proves that, and puts the lock back as it was. Where the old one does not open the lock, the
/// new one is tried once, and where the new one does not open it afterwards, the old one.
/// \param old  null where nobody has it: enough for a camera that an earlier run has given \p next already
Outcome change(Camera &camera, const Secret *old, const Secret &next, const ChangeRules &rules);

Reason noSecretReason();

} // namespace fleet
