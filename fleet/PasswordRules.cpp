// SPDX-License-Identifier: MIT
#include "PasswordRules.h"

#include <algorithm>
#include <string_view>

namespace fleet {

namespace {

constexpr std::size_t shortest = 3;

Reason rule(std::string text)
{
    return {ReasonCode::Rule, std::move(text), "Give another new password for this camera."};
}

} // namespace

std::optional<Reason> ruleFault(const Secret &next, const Secret *current)
{
    const std::string &bytes = next.reveal();
    if (bytes.size() < shortest)
        return rule("The new password is shorter than 3 bytes.");
    if (bytes.size() > longestPassword)
        return rule("The new password is longer than 64 bytes.");
    if (bytes.find_first_of(std::string_view("\0\n\r", 3)) != std::string::npos)
        return rule("The new password has a zero byte or a line end in it.");
    if (bytes == factoryPassword)
        return rule("The new password is the factory's.");
    if (current && next == *current)
        return rule("The new password is the old one.");
    return std::nullopt;
}

std::vector<std::pair<std::size_t, Reason>> sharedSecretFaults(const std::vector<const Secret *> &secrets)
{
    std::vector<std::size_t> places;
    for (std::size_t place = 0; place < secrets.size(); ++place) {
        if (secrets[place])
            places.push_back(place);
    }
    std::ranges::stable_sort(
        places, {}, [&](std::size_t place) -> const std::string & { return secrets[place]->reveal(); });
    std::vector<std::pair<std::size_t, Reason>> faults;
    for (auto begin = places.begin(); begin != places.end();) {
        const auto end = std::find_if(
            begin, places.end(), [&](std::size_t place) { return !(*secrets[place] == *secrets[*begin]); });
        for (auto place = begin; end - begin > 1 && place != end; ++place)
            faults.emplace_back(*place,
                                Reason{ReasonCode::Rule, "Another camera is to get the same new password.",
                                       "Give each its own, or --allow-shared."});
        begin = end;
    }
    std::ranges::sort(faults, {}, &std::pair<std::size_t, Reason>::first);
    return faults;
}

} // namespace fleet
