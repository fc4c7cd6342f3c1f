// SPDX-License-Identifier: MIT
// The register bytes that one node map keeps, by place: nodes that share a register share what was read of it. On a
// camera each read is a round trip, so a place is asked once within a call from outside, however many nodes lie there, and
// whether it answers or not.
#pragma once

#include "Trail.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <map>
#include <span>
#include <string>
#include <utility>

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

        std::uint64_t last() const { return address + (length - 1); }
        bool holds(const Place &inner) const
        {
            return port == inner.port && address <= inner.address && inner.last() <= last();
        }
    };
    /// What was last read of a place.
    struct Known
    {
        std::string bytes; ///< short ones need no memory of their own
        std::uint64_t call = 0;
        std::uint64_t writes = 0;
        std::uint64_t generation = 0;
        std::uint64_t pollClock = 0;
        bool isFilled = false; ///< not when the last read has failed
    };
    using Slot = std::map<Place, Known>::value_type;
    /// A place as a node remembers it, to find it again without a search.
    struct Handle
    {
        Slot *slot = nullptr;
        std::uint64_t epoch = 0;
    };

    /// What is known of \p place; null when that is nothing. The pointer holds until the next read of a device.
    const Known *find(const Place &place, Handle &handle);
    /// What this call has read of a place around \p place since the last write; from then on it is known of \p place too.
    /// Null when that is nothing.
    /// \throws whatever the device has answered in this call when \p place was read in vain
    const Known *findAround(const Place &place, Handle &handle);
    /// Takes what a device has just answered. Where nothing was known before, that counts as changed.
    void keep(const Place &place, std::span<const std::uint8_t> bytes, Handle &handle);
    /// Takes the exception that a device has just answered with. Nothing is known of \p place any more.
    void keepFailure(const Place &place);

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
    /// What this call has asked since the last write.
    struct Asked
    {
        std::uint64_t call = 0;
        std::uint64_t writes = 0;
        /// By port and first address. None lies within another, so the one around a place is the last that does not
        /// begin behind it.
        std::map<std::pair<const PortNode *, std::uint64_t>, const Slot *> outermost;
        const Slot *latest = nullptr; ///< joins them when more is looked for: most calls read one register
        std::map<Place, std::exception_ptr> failures;
    };

    Asked &askedNow();
    Slot &fill(const Place &place, std::span<const std::uint8_t> bytes);
    void addLatest();
    void makeRoom(std::size_t addedBytes);

    const Trail &trail;
    std::map<Place, Known> places;
    Asked asked;
    std::uint64_t epoch = 0; ///< of the handles: places have gone since those of another one
    std::size_t keptBytes = 0;
    std::uint64_t writes = 0;
    std::uint64_t generation = 0;
    std::uint64_t clock = 0;
    std::uint64_t changedIn = 0; ///< earlier calls have read before a register changed
};

} // namespace GenApi_3_2_TVN
