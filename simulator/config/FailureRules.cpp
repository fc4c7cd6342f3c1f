// SPDX-License-Identifier: MIT
#include "FailureRules.h"

#include "GenTLError.h"

#include <algorithm>

namespace simulator {

namespace {

bool matches(const FailureRule &rule, const CallSubject &subject, std::string_view id)
{
    return rule.function == subject.function && (!rule.address || rule.address == subject.address) &&
           (!rule.command || rule.command == subject.command) && (!rule.id || *rule.id == id);
}

bool isDue(const FailureRule &rule, std::uint64_t call)
{
    return call >= rule.first && (rule.count == 0 || call - rule.first < rule.count);
}

} // namespace

void FailureRules::replace(const std::vector<FailureRule> &newRules)
{
    std::vector<Counted> counted;
    for (const FailureRule &rule : newRules) {
        const auto old = std::find_if(rules.begin(), rules.end(),
                                      [&](const Counted &other) { return other.rule == rule; });
        counted.push_back({rule, old == rules.end() ? 0 : old->calls});
    }
    rules = std::move(counted);
}

void FailureRules::strike(const CallSubject &subject, std::string_view id)
{
    const FailureRule *due = nullptr;
    for (Counted &counted : rules)
        if (matches(counted.rule, subject, id) && isDue(counted.rule, ++counted.calls) && !due)
            due = &counted.rule;
    if (due)
        throw GenTLError(due->code, due->text);
}

} // namespace simulator
