// SPDX-License-Identifier: MIT
// What became of one chosen camera.
#pragma once

#include "Camera.h"

#include <chrono>
#include <optional>

namespace fleet {

enum class Action
{
    List,
    Verify,
    Unlock,
    Lock,
    Change,
    Reset
};

enum class Result
{
    Done,
    Unchanged, // it was so already
    Failed,
    Refused, // before anything was written
    Skipped,
    NotProved,
    Would // in a dry run
};

/// Which password the camera is on after a change.
enum class InForce
{
    Old,    // nothing was written, or the old one was proved again
    New,    // proved
    Unknown // all else, a wrong password included
};

struct Outcome
{
    Result result = Result::Failed;
    std::optional<InForce> inForce; ///< of a change
    std::optional<Reason> reason;
    std::chrono::milliseconds duration{0};
};

const char *wordOf(Action action);
const char *wordOf(Result result);
const char *wordOf(InForce inForce);

} // namespace fleet
