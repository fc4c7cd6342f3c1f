// SPDX-License-Identifier: MIT
#include "Selection.h"

#include "Pattern.h"
#include "ShownText.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace fleet {

namespace {

using Values = std::vector<std::string>;

struct IdentityOption
{
    const char *name;
    const Values &values;
    std::string_view (*of)(const Camera &);
};

std::vector<IdentityOption> identityOptions(const Selection &selection)
{
    return {
        {"--serial", selection.serials,
         [](const Camera &camera) -> std::string_view { return camera.serial; }},
        {"--id", selection.ids, [](const Camera &camera) -> std::string_view { return camera.place.id; }},
        {"--model", selection.models, [](const Camera &camera) -> std::string_view { return camera.model; }},
        {"--interface", selection.interfaces,
         [](const Camera &camera) -> std::string_view { return camera.place.interface; }}};
}

/// The values of one option. Thousands of serial numbers may come from a file, for thousands of cameras: plain ones are
/// looked up.
class Alternatives
{
public:
    explicit Alternatives(const IdentityOption &option) : option(option)
    {
        for (const std::string &value : option.values) {
            if (isPattern(value))
                patterns.push_back(value);
            else
                plain.insert(value);
        }
    }

    bool admit(const Camera &camera) const
    {
        const std::string_view text = option.of(camera);
        return option.values.empty() || plain.contains(text) ||
               std::ranges::any_of(patterns,
                                   [&](const std::string &pattern) { return matches(pattern, text); });
    }

private:
    const IdentityOption option;
    std::unordered_set<std::string_view> plain;
    std::vector<std::string> patterns;
};

bool holdsPlain(const Values &values, const std::string &text)
{
    return !isPattern(text) && std::ranges::find(values, text) != values.end();
}

bool holdsMac(const Selection &selection, const Camera &camera)
{
    return camera.mac && std::ranges::find(selection.macs, *camera.mac) != selection.macs.end();
}

} // namespace

bool Selection::choosesNothing() const
{
    return serials.empty() && ids.empty() && models.empty() && interfaces.empty() && !needsLook() && !all;
}

std::vector<std::size_t> chooseByIdentity(const Selection &selection, const std::vector<Camera> &cameras)
{
    std::vector<Alternatives> options;
    for (const IdentityOption &option : identityOptions(selection))
        options.emplace_back(option);
    std::vector<std::size_t> chosen;
    for (std::size_t place = 0; place < cameras.size(); ++place) {
        if (std::ranges::all_of(options, [&](const auto &option) { return option.admit(cameras[place]); }))
            chosen.push_back(place);
    }
    return chosen;
}

std::vector<std::string> unmatchedValues(const Selection &selection, const std::vector<Camera> &cameras)
{
    std::vector<std::string> unmatched;
    for (const IdentityOption &option : identityOptions(selection)) {
        std::unordered_set<std::string_view> texts;
        for (const Camera &camera : cameras)
            texts.insert(option.of(camera));
        const auto isMet = [&](const std::string &value) {
            return isPattern(value) ? std::ranges::any_of(
                                          texts, [&](std::string_view text) { return matches(value, text); })
                                    : texts.contains(value);
        };
        std::unordered_set<std::string_view> told;
        for (const std::string &value : option.values) {
            if (!isMet(value) && told.insert(value).second)
                unmatched.push_back(std::string(option.name) + ' ' + shownText(value));
        }
    }
    return unmatched;
}

bool passesLook(const Selection &selection, const Camera &camera)
{
    if (!selection.macs.empty() && !holdsMac(selection, camera))
        return false;
    if (selection.onFactory && camera.password != Password::Factory)
        return false;
    if (selection.locked && camera.lock != Lock::Locked)
        return false;
    return !selection.unlocked || camera.lock == Lock::Unlocked;
}

bool isNamed(const Selection &selection, const Camera &camera)
{
    return holdsPlain(selection.serials, camera.serial) || holdsPlain(selection.ids, camera.place.id) ||
           holdsMac(selection, camera);
}

} // namespace fleet
