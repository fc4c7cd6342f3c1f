// SPDX-License-Identifier: MIT
#include "Questions.h"

#include "Interrupted.h"
#include "ShownName.h"
#include "Terminal.h"
#include "UsageError.h"

#include <algorithm>
#include <iostream>

namespace fleet {

namespace {

bool confirmReset(const Camera &camera)
{
    const std::string name = shownText(nameOf(camera));
    const auto answer = platform::askLine("Factory reset of " + shownName(camera) +
                                          ": all its settings are lost. Type " + name + " to go on: ");
    return answer && *answer == name;
}

} // namespace

std::optional<Secret> askForSecret(const Camera &camera, Secrets::Kind kind)
{
    if (!platform::canAsk())
        return std::nullopt;
    const std::string of = shownName(camera);
    if (kind == Secrets::Kind::Current)
        return platform::askSecret("Password of " + of + ": ");
    for (;;) {
        std::optional<Secret> first = platform::askSecret("New password of " + of + ": ");
        if (!first)
            return std::nullopt;
        const std::optional<Secret> second = platform::askSecret("The same again: ");
        if (!second)
            return std::nullopt;
        if (*first == *second)
            return first;
        std::cerr << "They differ.\n" << std::flush;
    }
}

void confirmResets(const Jobs &jobs)
{
    for (const Job &job : jobs) {
        if (job.outcome)
            continue;
        if (!platform::canAsk())
            throw UsageError(
                "There is no terminal on which a factory reset could be confirmed: say --yes to reset " +
                shownName(*job.camera) + " and whatever else is chosen.");
        const bool isConfirmed = confirmReset(*job.camera);
        throwIfInterrupted();
        if (!isConfirmed)
            throw UsageError("This is not what was asked for: nothing was reset.");
    }
}

} // namespace fleet
