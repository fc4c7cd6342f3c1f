// SPDX-License-Identifier: MIT
#include "CheckRules.h"

#include <algorithm>

namespace fleet {

int CameraCounts::of(Trouble trouble) const
{
    switch (trouble) {
    case Trouble::Factory:
        return factory;
    case Trouble::Unlocked:
        return unlocked;
    case Trouble::Unknown:
        break;
    }
    return unknown;
}

bool isIn(Trouble trouble, const Camera &camera)
{
    switch (trouble) {
    case Trouble::Factory:
        return camera.password == Password::Factory;
    case Trouble::Unlocked:
        return camera.lock == Lock::Unlocked;
    case Trouble::Unknown:
        break;
    }
    return camera.password == Password::Unknown;
}

CameraCounts countCameras(const std::vector<const Camera *> &cameras)
{
    const auto with = [&](auto predicate) {
        return static_cast<int>(
            std::ranges::count_if(cameras, [&](const Camera *camera) { return predicate(*camera); }));
    };
    const auto on = [&](Password password) {
        return with([&](const Camera &camera) { return camera.password == password; });
    };
    return {.factory = on(Password::Factory),
            .unlocked = with([](const Camera &camera) { return isIn(Trouble::Unlocked, camera); }),
            .unknown = on(Password::Unknown),
            .none = on(Password::None),
            .user = on(Password::User)};
}

bool isBroken(const CheckRule &rule, const CameraCounts &counts)
{
    return counts.of(rule.trouble) > rule.most;
}

CheckState judge(const CameraCounts &counts, const std::vector<CheckRule> &rules, bool isComplete)
{
    for (const CheckState state : {CheckState::Critical, CheckState::Warning}) {
        if (std::ranges::any_of(
                rules, [&](const CheckRule &rule) { return rule.state == state && isBroken(rule, counts); }))
            return state;
    }
    return isComplete ? CheckState::Ok : CheckState::Unknown;
}

const char *wordOf(Trouble trouble)
{
    switch (trouble) {
    case Trouble::Factory:
        return "factory";
    case Trouble::Unlocked:
        return "unlocked";
    case Trouble::Unknown:
        break;
    }
    return "unknown";
}

const char *wordOf(CheckState state)
{
    switch (state) {
    case CheckState::Ok:
        return "ok";
    case CheckState::Warning:
        return "warning";
    case CheckState::Critical:
        return "critical";
    case CheckState::Unknown:
        break;
    }
    return "unknown";
}

} // namespace fleet
