// SPDX-License-Identifier: MIT
// See the header.
#include "Conversion.h"

#include <algorithm>
#include <string>
#include <type_traits>

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::PropertyException;

template <class T>
Conversion<T>::Conversion(Node &owner)
    : pValue{Link::ofChild(owner, "pValue")},
      formulaTo{owner, "FormulaTo", "FROM"},
      formulaFrom{owner, "FormulaFrom", "TO"},
      slope{statedSlope(owner)}
{
    if (!pValue)
        owner.fail<PropertyException>("no pValue");
}

template <class T>
typename Conversion<T>::Slope Conversion<T>::statedSlope(const Node &owner)
{
    const std::string text = owner.childText("Slope").value_or("Automatic");
    if (text == "Increasing")
        return Slope::Increasing;
    if (text == "Decreasing")
        return Slope::Decreasing;
    if (text == "Varying")
        return Slope::Varying;
    if (text == "Automatic")
        return Slope::Automatic;
    owner.fail<PropertyException>("Slope: '" + text +
                                  "' is none of Increasing, Decreasing, Varying and Automatic");
}

template <class T>
T Conversion<T>::read(Reading reading)
{
    if constexpr (std::is_same_v<T, double>)
        return formulaFrom.evaluate(reading, pValue->real(reading));
    else
        return formulaFrom.evaluate(reading, pValue->integer(reading));
}

template <class T>
void Conversion<T>::write(T value)
{
    pValue->set(formulaTo.evaluate(Reading{}, value));
}

template <class T>
std::pair<T, T> Conversion<T>::range()
{
    const std::pair unlimited{lowestOf<T>, highestOf<T>};
    if (slope == Slope::Varying)
        return unlimited;
    std::optional<T> first;
    std::optional<T> second;
    if constexpr (std::is_same_v<T, double>) {
        first = converted(pValue->minimum().real());
        second = converted(pValue->maximum().real());
    } else {
        first = converted(pValue->minimum().ceiling());
        second = converted(pValue->maximum().floor());
    }
    if (first && second)
        return std::minmax(*first, *second);
    if (slope == Slope::Automatic)
        return unlimited;
    if (slope == Slope::Decreasing)
        std::swap(first, second);
    return {first.value_or(lowestOf<T>), second.value_or(highestOf<T>)};
}

/// An integer formula wraps at the ends of the 64 bits, where its result would be none.
template <class T>
std::optional<T> Conversion<T>::converted(T innerEnd)
{
    const bool isUnlimited =
        std::is_same_v<T, std::int64_t> && (innerEnd == lowestOf<T> || innerEnd == highestOf<T>);
    return isUnlimited ? std::nullopt : formulaFrom.resultOf(innerEnd);
}

/// The formulas' variables only have to be readable.
template <class T>
EAccessMode Conversion<T>::accessMode(AccessQuestion question) const
{
    return narrower(pValue->accessMode(question), formulaFrom.accessMode(question));
}

template class Conversion<std::int64_t>;
template class Conversion<double>;

} // namespace GenApi_3_2_TVN
