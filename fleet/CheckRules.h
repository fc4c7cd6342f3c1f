// SPDX-License-Identifier: MIT
// What a check counts, and when the counts are too high. Pure: cameras in, verdict out.
#pragma once

#include "Camera.h"

#include <vector>

namespace fleet {

/// The statuses of monitoring plugins.
enum class CheckState
{
    Ok = 0,
    Warning = 1,
    Critical = 2,
    Unknown = 3
};

/// What a rule can limit. A camera may be in more than one of these states.
enum class Trouble
{
    Factory, // it is on the factory password
    Unlocked,
    Unknown // whose password it is on is not known; cameras without the lock are no such
};

inline constexpr Trouble allTroubles[] = {Trouble::Factory, Trouble::Unlocked, Trouble::Unknown};

/// More cameras than \p most in such a state are a warning, or critical.
struct CheckRule
{
    Trouble trouble;
    CheckState state;
    int most;
};

struct CameraCounts
{
    int factory = 0;
    int unlocked = 0;
    int unknown = 0;
    int none = 0; ///< cameras without the lock
    int user = 0;

    int of(Trouble trouble) const;
};

bool isIn(Trouble trouble, const Camera &camera);
CameraCounts countCameras(const std::vector<const Camera *> &cameras);
bool isBroken(const CheckRule &rule, const CameraCounts &counts);

/// The worst of the rules that are broken. What is known to be wrong outranks what is not known.
/// \param isComplete  all cameras that the check is about could be counted; else it is Unknown at best
CheckState judge(const CameraCounts &counts, const std::vector<CheckRule> &rules, bool isComplete);

const char *wordOf(Trouble trouble);
const char *wordOf(CheckState state);

} // namespace fleet
