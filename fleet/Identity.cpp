// SPDX-License-Identifier: MIT
#include "Identity.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace fleet {

namespace {

std::string serialAndModel(const Camera &camera)
{
    return camera.serial + '\0' + camera.model;
}

} // namespace

// One interface tells of each of its cameras once.
bool isSameCamera(const Camera &one, const Camera &other)
{
    if (one.place.producer == other.place.producer && one.place.interface == other.place.interface)
        return false;
    if (one.mac && other.mac)
        return *one.mac == *other.mac;
    // Who was asked and tells none is not the one that tells it.
    if ((one.mac && other.wasLooked) || (other.mac && one.wasLooked))
        return false;
    return !one.serial.empty() && one.serial == other.serial && one.model == other.model;
}

void markDuplicates(std::vector<Camera> &cameras)
{
    // The first entries only.
    std::unordered_map<std::uint64_t, std::vector<const Camera *>> byMac;
    std::unordered_map<std::string, std::vector<const Camera *>> bySerial;
    const auto firstOf = [](const std::vector<const Camera *> &alike, const Camera &camera) {
        const auto same =
            std::ranges::find_if(alike, [&](const Camera *one) { return isSameCamera(*one, camera); });
        return same == alike.end() ? nullptr : *same;
    };
    for (Camera &camera : cameras) {
        const Camera *first = camera.mac ? firstOf(byMac[*camera.mac], camera) : nullptr;
        if (!first)
            first = firstOf(bySerial[serialAndModel(camera)], camera);
        camera.duplicateOf = first ? std::optional(first->place) : std::nullopt;
        if (first)
            continue;
        if (camera.mac)
            byMac[*camera.mac].push_back(&camera);
        bySerial[serialAndModel(camera)].push_back(&camera);
    }
}

std::map<std::string, std::vector<std::size_t>> sharedSerials(const std::vector<Camera> &cameras)
{
    std::map<std::string, std::vector<std::size_t>> shared;
    for (std::size_t place = 0; place < cameras.size(); ++place) {
        if (!cameras[place].serial.empty() && !cameras[place].duplicateOf)
            shared[cameras[place].serial].push_back(place);
    }
    std::erase_if(shared, [](const auto &entry) { return entry.second.size() < 2; });
    return shared;
}

std::vector<std::size_t> unclearIdentities(const std::vector<Camera> &cameras)
{
    std::unordered_map<std::string, std::vector<std::size_t>> places;
    for (std::size_t place = 0; place < cameras.size(); ++place) {
        if (!cameras[place].serial.empty())
            places[serialAndModel(cameras[place])].push_back(place);
    }
    std::vector<std::size_t> unclear;
    for (std::size_t place = 0; place < cameras.size(); ++place) {
        const auto found = places.find(serialAndModel(cameras[place]));
        if (found != places.end() && found->second.size() > 1)
            unclear.push_back(place);
    }
    return unclear;
}

} // namespace fleet
