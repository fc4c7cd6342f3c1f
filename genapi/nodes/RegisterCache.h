// SPDX-License-Identifier: MIT
// The register bytes that one node map keeps, by place: nodes that share a register share what was read of it. On a
// camera each read is a round trip, so a place is asked once within a call from outside, however many nodes lie there.
#pragma once

#include "Trail.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>

namespace GenApi_3_2_TVN {

class PortNode;

class RegisterCache
{
public:
    /// \param trail  tells the calls from outside apart; outlives the cache
    explicit RegisterCache(const Trail &trail) : trail{trail} {}

    struct Place
    {
        const PortNode *port;
        std::uint64_t address;
        std::size_t length;

        // NOLINTNEXTLINE(modernize-use-nullptr): it takes the comparison that the compiler writes for a null pointer
        auto operator<=>(const Place &) const = default;
    };
    /// What was last read of a place.
    struct Known
    {
        std::string bytes; ///< short ones need no memory of their own
        std::uint64_t call = 0;
        std::uint64_t writes = 0;
        std::uint64_t generation = 0;
        std::uint64_t pollClock = 0;
        bool isFilled = false; ///< false while it is read, and for good when that fails
    };
    /// A place as a node remembers it, to find it again without a search.
    struct Handle
    {
        std::map<Place, Known>::value_type *slot = nullptr;
        std::uint64_t epoch = 0;
    };

    /// What is known of \p place; null when that is nothing. The pointer holds until the next read of a device.
    Known *find(const Place &place, Handle &handle);
    /// Takes what a device has just answered.
    /// \param isNew  whether nothing was known before, so that it counts as changed
    void keep(const Place &place, std::span<const std::uint8_t> bytes, bool isNew, Handle &handle);

    // How long it is good.

    /// Read in this call, with no write since.
    bool isOfThisCall(const Known &known) const
    {
        return known.call == trail.call() && known.writes == writes;
    }
    /// Nothing was written and nothing dropped since.
    bool isOfNow(const Known &known) const { return known.generation == generation; }
    /// Neither its call nor a later one has found a register changed.
    bool isOfLastChange(const Known &known) const { return known.call >= changedIn; }
    /// Milliseconds that Poll() has counted since.
    std::uint64_t age(const Known &known) const { return clock - known.pollClock; }

    // What ends it.

    /// A value is about to be written. What this call has read stays known until the write reaches a device.
    void expire() { ++generation; }
    /// Nothing is known of the devices any more: which registers a write changes, only they know.
    void forget()
    {
        ++generation;
        ++writes;
    }
    void letPass(std::uint64_t elapsedMs) { clock += elapsedMs; }

private:
    void makeRoom(std::size_t addedBytes);

    const Trail &trail;
    std::map<Place, Known> places;
    std::uint64_t epoch = 0; ///< of the handles: places have gone since those of another one
    std::size_t keptBytes = 0;
    std::uint64_t writes = 0;
    std::uint64_t generation = 0;
    std::uint64_t clock = 0;
    std::uint64_t changedIn = 0; ///< earlier calls have read before a register changed
};

} // namespace GenApi_3_2_TVN
