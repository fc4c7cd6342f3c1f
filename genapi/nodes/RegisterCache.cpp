// SPDX-License-Identifier: MIT
// See the header.
#include "RegisterCache.h"

#include "Limits.h"

#include <algorithm>

namespace GenApi_3_2_TVN {

RegisterCache::Known *RegisterCache::find(const Place &place, Handle &handle)
{
    if (handle.slot != nullptr && handle.epoch == epoch && handle.slot->first == place)
        return &handle.slot->second;
    const auto found = places.find(place);
    if (found == places.end())
        return nullptr;
    handle = {&*found, epoch};
    return &found->second;
}

void RegisterCache::keep(const Place &place, std::span<const std::uint8_t> bytes, bool isNew, Handle &handle)
{
    if (bytes.size() > limits::cachedRegisterLength) {
        changedIn = trail.call() + 1; // nobody knows
        return;
    }
    const auto [slot, isAdded] = places.try_emplace(place);
    Known &known = slot->second;
    const auto toByte = [](char byte) { return static_cast<std::uint8_t>(byte); };
    if (isNew)
        changedIn = std::max(changedIn, trail.call());
    else if (!std::ranges::equal(known.bytes, bytes, {}, toByte))
        changedIn = trail.call() + 1; // also of what this call has read before
    known.bytes.assign(bytes.begin(), bytes.end());
    known.call = trail.call();
    known.writes = writes;
    known.generation = generation;
    known.pollClock = clock;
    known.isFilled = true;
    if (isAdded)
        makeRoom(bytes.size());
    handle = {&*slot, epoch};
}

/// When it is full, all that this call has not read goes: a selector that runs through a table reads a new place each
/// time.
void RegisterCache::makeRoom(std::size_t addedBytes)
{
    keptBytes += addedBytes;
    if (places.size() <= limits::cachedPlaces && keptBytes <= limits::cachedLength)
        return;
    std::erase_if(places, [this](const auto &slot) {
        const bool isToGo = slot.second.call != trail.call();
        keptBytes -= isToGo ? slot.first.length : 0;
        return isToGo;
    });
    ++epoch;
}

} // namespace GenApi_3_2_TVN
