// SPDX-License-Identifier: MIT
// See the header.
#include "RegisterCache.h"

#include "Limits.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace GenApi_3_2_TVN {

const RegisterCache::Known *RegisterCache::find(const Place &place, Handle &handle)
{
    if (handle.slot != nullptr && handle.epoch == epoch && handle.slot->first == place)
        return &handle.slot->second;
    const auto found = places.find(place);
    if (found == places.end())
        return nullptr;
    handle = {&*found, epoch};
    return &found->second;
}

const RegisterCache::Known *RegisterCache::findAround(const Place &place, Handle &handle)
{
    const Asked &now = askedNow();
    if (const auto failed = now.failures.find(place); failed != now.failures.end())
        std::rethrow_exception(failed->second);
    const auto behind = now.outermost.upper_bound({place.port, place.address});
    if (behind == now.outermost.begin())
        return nullptr;
    const auto &[around, known] = *std::prev(behind)->second;
    if (!around.holds(place) || !known.isFilled)
        return nullptr;
    const auto *const bytes = reinterpret_cast<const std::uint8_t *>(known.bytes.data());
    Slot &slot = fill(place, {bytes + (place.address - around.address), place.length});
    slot.second.generation = known.generation;
    handle = {&slot, epoch};
    return &slot.second;
}

void RegisterCache::keep(const Place &place, std::span<const std::uint8_t> bytes, Handle &handle)
{
    if (bytes.size() > limits::cachedRegisterLength) {
        changedIn = trail.call() + 1; // nobody knows
        return;
    }
    Slot &slot = fill(place, bytes);
    askedNow().latest = &slot;
    handle = {&slot, epoch};
}

void RegisterCache::keepFailure(const Place &place)
{
    if (const auto found = places.find(place); found != places.end())
        found->second.isFilled = false;
    askedNow().failures[place] = std::current_exception();
}

RegisterCache::Asked &RegisterCache::askedNow()
{
    if (asked.call == trail.call() && asked.writes == writes) {
        addLatest();
        return asked;
    }
    asked.latest = nullptr;
    asked.outermost.clear();
    asked.failures.clear();
    asked.call = trail.call();
    asked.writes = writes;
    return asked;
}

RegisterCache::Slot &RegisterCache::fill(const Place &place, std::span<const std::uint8_t> bytes)
{
    const auto [slot, isAdded] = places.try_emplace(place);
    Known &known = slot->second;
    const auto toByte = [](char byte) { return static_cast<std::uint8_t>(byte); };
    if (!known.isFilled)
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
    return *slot;
}

/// To the outermost, where it lies within none of them.
void RegisterCache::addLatest()
{
    const Slot *const slot = std::exchange(asked.latest, nullptr);
    if (slot == nullptr)
        return;
    auto &outermost = asked.outermost;
    const Place &place = slot->first;
    auto next = outermost.lower_bound({place.port, place.address});
    const auto isAround = [&](auto other) { return other->second->first.holds(place); };
    if ((next != outermost.begin() && isAround(std::prev(next))) ||
        (next != outermost.end() && isAround(next)))
        return;
    while (next != outermost.end() && place.holds(next->second->first))
        next = outermost.erase(next);
    outermost.emplace_hint(next, std::pair{place.port, place.address}, slot);
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
