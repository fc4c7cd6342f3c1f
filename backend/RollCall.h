// SPDX-License-Identifier: MIT
// Which of the known are still there: the step that keeping a list up to date begins and ends with, for
// identifiers that a producer reports and for the devices that a pass meets.
#pragma once

#include <cstddef>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

/// Nearly always everything stands where it stood, so a key is first looked for at its own place; the index
/// of the keys is made when one is not there.
template <class Key>
class RollCall
{
public:
    explicit RollCall(std::vector<Key> known) : known(std::move(known)), present(this->known.size(), false) {}

    /// Marks \p key, which is expected at \p place, as present. \return whether it is known
    bool answer(std::size_t place, Key key)
    {
        if (place < known.size() && known[place] == key) {
            present[place] = true;
            return true;
        }
        if (places.empty()) {
            for (std::size_t i = 0; i < known.size(); ++i)
                places.emplace(known[i], i);
        }
        const auto found = places.find(key);
        if (found == places.end())
            return false;
        present[found->second] = true;
        return true;
    }

    /// The places of the keys that did not answer, ascending. Where a key is known twice, one answer is for
    /// both.
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
    const std::vector<Key> known;
    std::vector<bool> present;
    std::unordered_map<Key, std::size_t> places;
};
