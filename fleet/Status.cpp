// SPDX-License-Identifier: MIT
#include "Status.h"

#include <algorithm>

namespace fleet {

namespace {

bool isGood(const Outcome &outcome)
{
    return outcome.result == Result::Done || outcome.result == Result::Unchanged ||
           outcome.result == Result::Would;
}

/// A camera that was changed, of which somebody has not been told, counts as done in part.
bool isWhole(const Outcome &outcome)
{
    return isGood(outcome) && !outcome.reason;
}

bool allHave(const std::vector<const Outcome *> &outcomes, ReasonCode code)
{
    return std::ranges::all_of(
        outcomes, [&](const Outcome *outcome) { return outcome->reason && outcome->reason->code == code; });
}

Status statusOf(const std::vector<const Outcome *> &outcomes, bool producerFailed)
{
    const auto is = [](auto predicate) {
        return [=](const Outcome *outcome) { return predicate(*outcome); };
    };
    if (std::ranges::any_of(outcomes,
                            [](const Outcome *outcome) { return outcome->result == Result::Refused; }))
        return Status::Usage;
    if (std::ranges::all_of(outcomes, is(isWhole)))
        return producerFailed ? Status::Unexpected : Status::Done;
    if (std::ranges::any_of(outcomes, is(isGood)))
        return Status::DoneInPart;
    if (allHave(outcomes, ReasonCode::Held))
        return Status::AllHeld;
    if (allHave(outcomes, ReasonCode::WrongPassword))
        return Status::WrongPassword;
    return Status::Unexpected;
}

} // namespace

Summary summarise(const std::vector<Outcome> &outcomes, bool producerFailed)
{
    Summary summary;
    std::vector<const Outcome *> counted;
    for (const Outcome &outcome : outcomes) {
        ++summary.selected;
        switch (outcome.result) {
        case Result::Done:
        case Result::Would:
            ++summary.done;
            break;
        case Result::Unchanged:
            ++summary.unchanged;
            break;
        case Result::Refused:
            ++summary.refused;
            break;
        case Result::Failed:
        case Result::NotProved:
            ++summary.failed;
            break;
        case Result::Skipped:
            continue;
        }
        counted.push_back(&outcome);
    }
    summary.status = statusOf(counted, producerFailed);
    return summary;
}

} // namespace fleet
