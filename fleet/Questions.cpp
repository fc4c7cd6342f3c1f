// SPDX-License-Identifier: MIT
#include "Questions.h"

#include "Interrupted.h"
#include "ShownName.h"
#include "Terminal.h"

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

void refuse(Job &job, std::string text, std::string next)
{
    job.outcome =
        Outcome{Result::Refused, {}, Reason{ReasonCode::Rule, std::move(text), std::move(next)}, {}};
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

bool confirmResets(Jobs &jobs)
{
    bool areConfirmed = true;
    for (Job &job : jobs) {
        if (job.outcome)
            continue;
        if (!platform::canAsk()) {
            refuse(job, "There is no terminal on which the factory reset could be confirmed.",
                   "Say --yes to reset all that are chosen.");
            areConfirmed = false;
            continue;
        }
        const bool isConfirmed = confirmReset(*job.camera);
        throwIfInterrupted();
        if (!isConfirmed) {
            refuse(job, "The factory reset was not confirmed.", "Type the name as it is shown.");
            return false;
        }
    }
    return areConfirmed;
}

} // namespace fleet
