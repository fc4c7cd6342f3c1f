// SPDX-License-Identifier: MIT
// SIGINT, SIGTERM and SIGHUP as a flag: a run finishes the camera in hand and then ends. Each platform has a source of its
// own.
#pragma once

namespace fleet::platform {

/// From now on the first such signal sets the flag, and no further one does anything. Whoever waits has to look at it. A
/// SIGHUP that is ignored, as by nohup, stays so.
void watchInterruption();

/// Whether one has come. Thread: any.
bool isInterrupted();

} // namespace fleet::platform
