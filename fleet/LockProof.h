// SPDX-License-Identifier: MIT
// The lock of an open camera, of which nothing is believed but a read of its state that worked.
#pragma once

#include "Camera.h"
#include "Secret.h"

namespace fleet {

/// Keeps the lock state of the camera up to date: unknown from each write until it has been read.
/// Each operation throws RegisterFailure where the state could not be read.
class LockProof
{
public:
    /// \param camera  open, for writing too; outlives this object
    explicit LockProof(Camera &camera) : camera(camera) {}

    /// Writes \p secret to the lock. A refused write is a wrong password; any other that failed is an answer only where the
    /// lock opened all the same.
    /// \return whether the lock is open now
    bool opens(const Secret &secret);
    /// Locks. \throws RegisterFailure  also when the lock stays open
    void close();
    /// Locks after a failure, which is the one to be told: this one's are not.
    void tryToClose() noexcept;

private:
    bool isLocked();

    Camera &camera;
};

} // namespace fleet
