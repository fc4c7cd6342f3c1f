// SPDX-License-Identifier: MIT
// Which of the known are still there: the step that keeping a list up to date begins and ends with, for
// identifiers that a producer reports and for the devices that a pass meets.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// Keys nearly always answer in the order in which they are known, so each is first looked for behind the one that
/// answered before it, and as long as all do, their number is all that is kept. A few may stand elsewhere; with more of
/// them an index of the keys is made.
template <class Key>
class RollCall
{
public:
    /// \param known  the caller's, for as long as the object lives
    explicit RollCall(std::span<const Key> known) : known(known) {}

    /// Marks \p key as present.
    /// \param key  may be of another type, which compares with a Key and converts to one
    /// \return whether it is known
    template <class Answer>
    bool answer(const Answer &key)
    {
        const std::size_t place =
            next < known.size() && key == known[next] ? next : find(static_cast<Key>(key));
        if (place == known.size())
            return false;
        if (place != next && present.empty())
            leaveOrder();
        if (!present.empty())
            present[place] = true;
        next = place + 1;
        return true;
    }

    /// The places of the keys that did not answer, ascending. Where a key is known twice, one answer is for both.
    std::vector<std::size_t> missing() const
    {
        std::vector<std::size_t> silent;
        for (std::size_t i = present.empty() ? next : 0; i < known.size(); ++i) {
            if (!isPresent(i))
                silent.push_back(i);
        }
        if (silent.empty())
            return silent;
        std::unordered_set<Key> answered;
        for (std::size_t i = 0; i < known.size(); ++i) {
            if (isPresent(i))
                answered.insert(known[i]);
        }
        std::erase_if(silent, [&](std::size_t i) { return answered.contains(known[i]); });
        return silent;
    }

private:
    static constexpr int MaxDetours = 4;

    bool isPresent(std::size_t place) const { return present.empty() ? place < next : present[place]; }

    void leaveOrder()
    {
        present.assign(known.size(), false);
        std::fill_n(present.begin(), next, true);
    }

    std::size_t find(const Key &key)
    {
        if (++detours <= MaxDetours)
            return static_cast<std::size_t>(std::find(known.begin(), known.end(), key) - known.begin());
        if (places.empty()) {
            for (std::size_t i = 0; i < known.size(); ++i)
                places.emplace(known[i], i);
        }
        const auto found = places.find(key);
        return found == places.end() ? known.size() : found->second;
    }

    const std::span<const Key> known;
    std::size_t next = 0;
    std::vector<bool> present; // empty as long as those before next have answered, and no others
    int detours = 0;
    std::unordered_map<Key, std::size_t> places;
};
