// SPDX-License-Identifier: MIT
#include "Selection.h"

#include "Pattern.h"
#include "ShownText.h"

#include <algorithm>
#include <string_view>

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

bool passes(const IdentityOption &option, const Camera &camera)
{
    return option.values.empty() || std::ranges::any_of(option.values, [&](const std::string &value) {
               return matches(value, option.of(camera));
           });
}

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
    const std::vector<IdentityOption> options = identityOptions(selection);
    std::vector<std::size_t> chosen;
    for (std::size_t place = 0; place < cameras.size(); ++place) {
        if (std::ranges::all_of(options, [&](const auto &option) { return passes(option, cameras[place]); }))
            chosen.push_back(place);
    }
    return chosen;
}

std::vector<std::string> unmatchedValues(const Selection &selection, const std::vector<Camera> &cameras)
{
    std::vector<std::string> unmatched;
    for (const IdentityOption &option : identityOptions(selection)) {
        for (const std::string &value : option.values) {
            const std::string told = std::string(option.name) + ' ' + shownText(value);
            if (std::ranges::none_of(
                    cameras, [&](const Camera &camera) { return matches(value, option.of(camera)); }) &&
                std::ranges::find(unmatched, told) == unmatched.end())
                unmatched.push_back(told);
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
