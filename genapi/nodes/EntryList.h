// SPDX-License-Identifier: MIT
// The entries of one enumeration, found by name, by symbolic and by value however many there are.
#pragma once

#include <pugixml.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace GenApi_3_2_TVN {

class EntryList
{
public:
    struct Entry
    {
        pugi::xml_node element;
        std::string_view name; ///< belongs to the document
        std::string symbolic;
        std::optional<std::int64_t> value; ///< empty when the description has none that can be read
        bool isSelfClearing = false;
    };

    explicit EntryList(pugi::xml_node enumeration);

    /// In the order of the description.
    const std::vector<Entry> &all() const { return entries; }

    struct Found
    {
        const Entry *entry = nullptr; ///< null when none has the name
        bool isDoubled = false;       ///< several have
    };
    Found withName(std::string_view name) const;
    Found withSymbolic(std::string_view symbolic) const;

    /// Their places in all().
    std::span<const std::size_t> withValue(std::int64_t value) const;

    /// Places in all() by value, entries without one left out.
    const std::vector<std::size_t> &byValue() const { return valueOrder; }

private:
    std::vector<Entry> entries;
    std::vector<std::size_t> nameOrder;
    std::vector<std::size_t> symbolicOrder;
    std::vector<std::size_t> valueOrder; ///< entries of one value in the order of the description
};

} // namespace GenApi_3_2_TVN
