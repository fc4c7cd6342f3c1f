// SPDX-License-Identifier: MIT
// The identifiers of a list's children as each pass compares them: one behind another in memory, since those of
// thousands of cameras, each beside its object, are more than a processor's cache holds.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class Roster
{
public:
    /// Takes the identifiers of \p children, pointers, in their order.
    template <class Children>
    void write(const Children &children)
    {
        std::size_t size = 0;
        for (const auto *child : children)
            size += child->identifier().size();
        text.clear();
        text.reserve(size); // it must not move below the views
        views.clear();
        for (const auto *child : children) {
            const std::string_view identifier = child->identifier();
            text += identifier;
            views.push_back(std::string_view(text).substr(text.size() - identifier.size()));
        }
    }

    void clear() { views.clear(); }

    /// Valid until the next write() or clear().
    std::span<const std::string_view> identifiers() const { return views; }

private:
    std::string text;
    std::vector<std::string_view> views;
};
