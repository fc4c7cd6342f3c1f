// SPDX-License-Identifier: MIT
// See the header.
#include "EntryList.h"

#include "ElementText.h"
#include "EnumEntryNode.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace GenApi_3_2_TVN {
namespace {

EntryList::Entry entryOf(pugi::xml_node element)
{
    const std::string_view name = element.attribute("Name").value();
    return {element, name, EnumEntryNode::symbolicOf(element), parseInteger(textOf(element.child("Value"))),
            textOf(element.child("IsSelfClearing")) == "Yes"};
}

/// The part of \p order, which is sorted by \p key, that has the key \p wanted.
template <class Wanted, class Key>
std::span<const std::size_t> partOf(const std::vector<std::size_t> &order, Wanted wanted, const Key &key)
{
    return {std::ranges::lower_bound(order, wanted, {}, key),
            std::ranges::upper_bound(order, wanted, {}, key)};
}

template <class Key>
EntryList::Found findIn(const std::vector<std::size_t> &order, std::string_view wanted, const Key &key)
{
    const std::span<const std::size_t> places = partOf(order, wanted, key);
    return {places.empty() ? nullptr : &key.list[places.front()], places.size() > 1};
}

/// The part of an entry by which an order is made.
template <class Member>
struct KeyOf
{
    const std::vector<EntryList::Entry> &list;
    Member member;
    std::string_view operator()(std::size_t place) const { return list[place].*member; }
};
template <class Member>
KeyOf(const std::vector<EntryList::Entry> &, Member) -> KeyOf<Member>;

} // namespace

EntryList::EntryList(pugi::xml_node enumeration)
{
    for (const pugi::xml_node element : enumeration.children("EnumEntry"))
        entries.push_back(entryOf(element));
    nameOrder.resize(entries.size());
    std::iota(nameOrder.begin(), nameOrder.end(), std::size_t{0});
    symbolicOrder = nameOrder;
    std::ranges::copy_if(nameOrder, std::back_inserter(valueOrder),
                         [this](std::size_t place) { return entries[place].value.has_value(); });
    std::ranges::sort(nameOrder, {}, KeyOf{entries, &Entry::name});
    std::ranges::sort(symbolicOrder, {}, KeyOf{entries, &Entry::symbolic});
    std::ranges::stable_sort(valueOrder, {}, [this](std::size_t place) { return *entries[place].value; });
}

EntryList::Found EntryList::withName(std::string_view name) const
{
    return findIn(nameOrder, name, KeyOf{entries, &Entry::name});
}

EntryList::Found EntryList::withSymbolic(std::string_view symbolic) const
{
    return findIn(symbolicOrder, symbolic, KeyOf{entries, &Entry::symbolic});
}

std::span<const std::size_t> EntryList::withValue(std::int64_t value) const
{
    return partOf(valueOrder, value, [this](std::size_t place) { return *entries[place].value; });
}

} // namespace GenApi_3_2_TVN
