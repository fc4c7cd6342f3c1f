// SPDX-License-Identifier: MIT
// See the header.
#include "FeatureValue.h"

#include "EnumerationNode.h"

#include <string>
#include <string_view>
#include <type_traits>

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::AccessException;
using GenICam_3_2_TVN::OutOfRangeException;

namespace {

/// A float means the quantity that an entry stands for, an integer its value.
template <class T>
EnumerationNode *enumerationBehind(const Link *link)
{
    return std::is_same_v<T, double> && link != nullptr ? link->node().asEnumeration() : nullptr;
}

template <class T>
void set(const Link &link, T value)
{
    if (EnumerationNode *const enumeration = enumerationBehind<T>(&link))
        enumeration->setQuantity(link.tag(), static_cast<double>(value));
    else
        link.set(value);
}

template <class T>
Number minimumOf(const Link &link)
{
    EnumerationNode *const enumeration = enumerationBehind<T>(&link);
    return enumeration != nullptr ? enumeration->quantities().first : link.minimum();
}

template <class T>
Number maximumOf(const Link &link)
{
    EnumerationNode *const enumeration = enumerationBehind<T>(&link);
    return enumeration != nullptr ? enumeration->quantities().second : link.maximum();
}

} // namespace

template <class T>
FeatureValue<T>::FeatureValue(Node &owner)
    : owner{owner},
      pIndex{Link::ofChild(owner, "pIndex")},
      min{owner, "Min", "pMin"},
      max{owner, "Max", "pMax"},
      inc{owner, "Inc", "pInc"}
{
    value = pIndex ? NumberSource<T>{owner, "ValueDefault", "pValueDefault"}
                   : NumberSource<T>::required(owner, "Value", "pValue");
    for (const pugi::xml_node child : owner.xml().children())
        addIndexed(child);
    for (const pugi::xml_node copy : owner.xml().children("pValueCopy"))
        pValueCopies.emplace_back(owner, "pValueCopy", copy);
}

/// Of two values for one index the first counts.
template <class T>
void FeatureValue<T>::addIndexed(pugi::xml_node child)
{
    const std::string_view tag = child.name();
    const bool isLink = tag == "pValueIndexed";
    if (!pIndex || (!isLink && tag != "ValueIndexed"))
        return;
    const std::int64_t index = owner.attributeOf(child, "Index");
    indexed.emplace(index, isLink ? NumberSource<T>{Link{owner, "pValueIndexed", child}}
                                  : NumberSource<T>{owner.numberOf<T>(child)});
}

template <class T>
template <class Self>
auto *FeatureValue<T>::sourceAt(Self &self, std::int64_t index)
{
    if (const auto found = self.indexed.find(index); found != self.indexed.end())
        return &found->second;
    return self.value.isPresent() ? &self.value : nullptr;
}

/// The source of the value at present.
template <class T>
template <class Self>
auto &FeatureValue<T>::current(Self &self)
{
    if (!self.pIndex)
        return self.value;
    const std::int64_t index = self.pIndex->integer({});
    auto *const source = sourceAt(self, index);
    if (source == nullptr)
        self.owner.template fail<OutOfRangeException>("pIndex is " + std::to_string(index) +
                                                      ", for which it has no value");
    return *source;
}

template <class T>
T FeatureValue<T>::read(Reading reading) const
{
    const NumberSource<T> &source = current(*this);
    if (EnumerationNode *const enumeration = enumerationBehind<T>(source.link()))
        return static_cast<T>(enumeration->quantity(source.link()->tag(), reading));
    return source.value(reading);
}

template <class T>
void FeatureValue<T>::write(T newValue)
{
    for (const Link &copy : pValueCopies)
        if (!isWritable(copy.accessMode({.includePort = false})))
            owner.template fail<AccessException>(std::string{"pValueCopy names '"} + copy.node().name() +
                                                 "', which can't be written");
    NumberSource<T> &source = current(*this);
    if (source.link() != nullptr)
        set(*source.link(), newValue);
    else
        source.setValue(newValue);
    for (const Link &copy : pValueCopies)
        set(copy, newValue);
}

/// What the copies can't take is out of range as well.
template <class T>
Number FeatureValue<T>::minimum()
{
    if (min.isPresent())
        return min.number();
    const Link *const inner = current(*this).link();
    Number highest = inner != nullptr ? minimumOf<T>(*inner) : lowestOf<T>;
    for (const Link &copy : pValueCopies)
        if (const Number other = minimumOf<T>(copy); highest < other)
            highest = other;
    return highest;
}

template <class T>
Number FeatureValue<T>::maximum()
{
    if (max.isPresent())
        return max.number();
    const Link *const inner = current(*this).link();
    Number lowest = inner != nullptr ? maximumOf<T>(*inner) : highestOf<T>;
    for (const Link &copy : pValueCopies)
        if (const Number other = maximumOf<T>(copy); other < lowest)
            lowest = other;
    return lowest;
}

template <class T>
std::optional<Number> FeatureValue<T>::increment()
{
    if (inc.isPresent())
        return inc.value({});
    const Link *const inner = current(*this).link();
    return inner != nullptr ? inner->increment() : std::nullopt;
}

/// Without the index, nobody knows which value is meant, and there may be none for it.
template <class T>
EAccessMode FeatureValue<T>::accessMode(AccessQuestion question) const
{
    if (pIndex && !isReadable(pIndex->accessMode(question)))
        return NA;
    const NumberSource<T> *const source = pIndex ? sourceAt(*this, pIndex->integer({})) : &value;
    if (source == nullptr)
        return NA;
    const Link *const inner = source->link();
    return inner != nullptr ? inner->accessMode(question) : RW;
}

template class FeatureValue<std::int64_t>;
template class FeatureValue<double>;

} // namespace GenApi_3_2_TVN
