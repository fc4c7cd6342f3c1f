// SPDX-License-Identifier: MIT
// A factory reset: the camera reboots, leaves the list, and comes back on its factory password.
#pragma once

#include "Camera.h"
#include "Outcome.h"

namespace fleet {

class Tree;

/// Writes the reset to an open camera.
Outcome sendReset(Camera &camera);

/// Waits up to 60 s until \p camera has come back.
/// \param mayOpen  it is opened then, and has to say that it is on its factory password
Outcome awaitReturn(Tree &tree, Camera &camera, bool mayOpen);

} // namespace fleet
