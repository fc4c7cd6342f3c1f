// SPDX-License-Identifier: MIT
// One short, read-only visit to a camera, for what it tells only when it is open.
#pragma once

#include "Camera.h"
#include "Outcome.h"

namespace fleet {

/// Opens \p camera read-only once, unless its access status says that this is in vain, reads lock state, password state,
/// addresses and firmware version, and closes it. What cannot be read is unknown, and the reason says why. That there is no
/// lock is believed only where the camera itself says that it has no such register, and answers for another one.
void lookInto(Camera &camera);

/// The same for a camera that is open already, and stays so.
void readOpened(Camera &camera);

/// Of one that is open and was read before, lock state and password state, which others may have changed since.
void readLockAgain(Camera &camera);

/// What becomes of a camera that has no password lock: a run over all of them passes it over, and one that the user named
/// fails.
Outcome noLockOutcome(bool isNamed);

/// Why a camera could not be opened.
/// \param code  GenTL's, of the failed call
/// \param text  the producer's words
Reason openReason(std::int32_t code, std::string text);

/// Why nothing can be done with a camera of this access, as far as that tells.
std::optional<Reason> accessReason(Access access);

} // namespace fleet
