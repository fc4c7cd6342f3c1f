// SPDX-License-Identifier: MIT
// Which of the known are still there: the step that keeping a list up to date begins and ends with, for
// identifiers that a producer reports and for the devices that a pass meets.
#pragma once

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

/// Keys nearly always answer in the order in which they are known, so each is first looked for behind the one that
/// answered before it. A few may stand elsewhere; with more of them an index of the keys is made.
template <class Key>
class RollCall
{
public:
    explicit RollCall(std::vector<Key> known) : known(std::move(known)), present(this->known.size(), false) {}

    /// Marks \p key as present.
    /// \return whether it is known
    bool answer(Key key)
    {
        const std::size_t place = next < known.size() && known[next] == key ? next : find(key);
        if (place == known.size())
            return false;
        present[place] = true;
        next = place + 1;
        return true;
    }

    /// The places of the keys that did not answer, ascending. Where a key is known twice, one answer is for both.
    std::vector<std::size_t> missing() const
    {
        std::vector<std::size_t> silent;
        for (std::size_t i = 0; i < known.size(); ++i) {
            if (!present[i])
                silent.push_back(i);
        }
        if (silent.empty())
            return silent;
        std::unordered_set<Key> answered;
        for (std::size_t i = 0; i < known.size(); ++i) {
            if (present[i])
                answered.insert(known[i]);
        }
        std::erase_if(silent, [&](std::size_t i) { return answered.contains(known[i]); });
        return silent;
    }

private:
    static constexpr int MaxDetours = 4;

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

    const std::vector<Key> known;
    std::vector<bool> present;
    std::size_t next = 0;
    int detours = 0;
    std::unordered_map<Key, std::size_t> places;
};
