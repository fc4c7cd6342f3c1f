// SPDX-License-Identifier: MIT
// A sequence that the view reads without a lock while the update thread writes it. Its slots lie in chunks that never
// move and live as long as the sequence, and each is atomic: a reader meets the old value or the new one, whole.
//
// A view asks for the number of rows, then for a row, then for its contents. A cut between these must not end in an
// error out of a paint: it lowers the count at once, but a cut slot stays readable until the view has been told.
//
// Writers exclude each other by a mutex of their own. Readers take none.
#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <utility>

/// \tparam T  what std::atomic holds; an empty T{} frees what a released slot held
template <class T>
class SlotSequence
{
public:
    /// How many entries there are. Thread: any.
    int count() const { return count_; }

    /// The entry at \p position, or the one that was cut from there and has not been released yet.
    /// \throws std::out_of_range  for all other positions
    /// Thread: any.
    T at(int position) const { return slot(position).load(); }

    /// \throws std::out_of_range  as at()
    void replace(int position, T value) { slot(position) = std::move(value); }

    void append(T value)
    {
        const int position = count_;
        const auto [chunk, offset] = place(position);
        if (!chunks[chunk])
            chunks[chunk] = std::make_unique<std::atomic<T>[]>(chunkSize(chunk));
        chunks[chunk][offset] = std::move(value);
        if (readable <= position)
            readable = position + 1;
        count_ = position + 1;
    }

    /// Leaves the first \p count entries.
    void cut(int count)
    {
        count_ = count;
        ++cuts_;
    }

    /// How many cuts there have been, for release().
    int cuts() const { return cuts_; }

    /// Frees the slots that have been cut, unless there has been another cut after \p cuts.
    /// Thread: that of the readers, so that none of them is at one.
    void release(int cuts)
    {
        if (cuts != cuts_)
            return;
        for (int position = count_; position < readable; ++position)
            replace(position, T{});
        readable = count_.load();
    }

private:
    static constexpr std::size_t FirstChunkSize = 64;

    // Each chunk is as large as all before it together, so that a few of them hold whatever an int can count.
    static constexpr std::size_t chunkSize(std::size_t chunk)
    {
        return chunk == 0 ? FirstChunkSize : FirstChunkSize << (chunk - 1);
    }

    struct Place
    {
        std::size_t chunk;
        std::size_t offset;
    };

    static constexpr Place place(int position)
    {
        const auto index = static_cast<std::size_t>(position);
        const auto chunk = static_cast<std::size_t>(std::bit_width(index / FirstChunkSize));
        return {chunk, chunk == 0 ? index : index - chunkSize(chunk)};
    }

    std::atomic<T> &slot(int position) const
    {
        if (position < 0 || position >= readable)
            throw std::out_of_range("SlotSequence: no such position");
        const auto [chunk, offset] = place(position);
        return chunks[chunk][offset];
    }

    // A chunk is made before the first count that reaches into it, and never replaced.
    std::array<std::unique_ptr<std::atomic<T>[]>, 26> chunks;
    std::atomic<int> count_ = 0;
    std::atomic<int> readable = 0; // count_, and the cut slots behind it
    int cuts_ = 0;
};
