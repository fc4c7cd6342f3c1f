// SPDX-License-Identifier: MIT
// What IntConverter and Converter share: an inner node, and a formula for each direction.
#pragma once

#include "NodeFormula.h"

#include <optional>
#include <utility>

namespace GenApi_3_2_TVN {

/// A part of the node that owns it.
/// \tparam T  std::int64_t or double: how its formulas compute
template <class T>
class Conversion
{
public:
    /// \throws PropertyException  a child is missing or unreadable
    explicit Conversion(Node &owner);

    T read(Reading reading);
    void write(T value);
    /// The range of the inner node, converted. The slope tells which end is which where only one has a result.
    std::pair<T, T> range();
    EAccessMode accessMode(AccessQuestion question) const;

private:
    enum class Slope
    {
        Increasing,
        Decreasing,
        Varying,  ///< the ends of the inner range are not those of the converted one
        Automatic ///< which of the two, the converted ends show
    };

    static Slope statedSlope(const Node &owner);
    std::optional<T> converted(T innerEnd);

    std::optional<Link> pValue;
    NodeFormula formulaTo;
    NodeFormula formulaFrom;
    Slope slope;
};

extern template class Conversion<std::int64_t>;
extern template class Conversion<double>;

} // namespace GenApi_3_2_TVN
