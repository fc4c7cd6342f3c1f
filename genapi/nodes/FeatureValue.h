// SPDX-License-Identifier: MIT
// What Integer and Float share: a value that is kept here, comes from another node, or is picked by an index; the
// nodes that are written along; the range and the step.
#pragma once

#include "NumberSource.h"

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace GenApi_3_2_TVN {

/// A part of the node that owns it.
/// \tparam T  std::int64_t or double
template <class T>
class FeatureValue
{
public:
    /// \throws PropertyException  the value or one of its numbers is missing or unreadable
    explicit FeatureValue(Node &owner);

    T read(Reading reading) const;
    void write(T value);
    Number minimum();
    Number maximum();
    std::optional<Number> increment();
    EAccessMode accessMode(AccessQuestion question) const;

private:
    void addIndexed(pugi::xml_node child);
    /// Null when there is no value for the index.
    template <class Self>
    static auto *sourceAt(Self &self, std::int64_t index);
    template <class Self>
    static auto &current(Self &self);

    Node &owner;
    NumberSource<T> value; ///< with pIndex, that of all indexes without a value of their own
    std::optional<Link> pIndex;
    std::map<std::int64_t, NumberSource<T>> indexed;
    std::vector<Link> pValueCopies; ///< written along, never read
    NumberSource<T> min;
    NumberSource<T> max;
    NumberSource<T> inc;
};

extern template class FeatureValue<std::int64_t>;
extern template class FeatureValue<double>;

} // namespace GenApi_3_2_TVN
