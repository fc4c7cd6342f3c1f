// SPDX-License-Identifier: MIT
// See the header.
#include "EnumerationNode.h"

#include "EnumEntryNode.h"
#include "Limits.h"
#include "NodeMap.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::AccessException;
using GenICam_3_2_TVN::gcstring;
using GenICam_3_2_TVN::GenericException;
using GenICam_3_2_TVN::OutOfRangeException;
using GenICam_3_2_TVN::PropertyException;

EnumerationNode::EnumerationNode(NodeMap &nodeMap, pugi::xml_node element)
    : Node{nodeMap, element},
      value{NumberSource<std::int64_t>::required(*this, "Value", "pValue")},
      entries{element}
{}

void EnumerationNode::GetEntries(NodeList_t &nodes)
{
    const Trail::Step step{map().trail(), *this, Aspect::Entry, ""};
    const std::vector<EnumEntryNode *> sound = soundEntries();
    nodes.assign(sound.begin(), sound.end());
}

void EnumerationNode::GetSymbolics(StringList_t &symbolics)
{
    const Trail::Step step{map().trail(), *this, Aspect::Entry, ""};
    StringList_t found;
    for (const EnumEntryNode *const entry : soundEntries()) {
        if (isAvailable(*entry))
            found.push_back(entry->GetSymbolic());
    }
    symbolics = found;
}

/// A description may have a million entries, so to go through them counts as work, and those that can't be made count as
/// nodes.
std::vector<EnumEntryNode *> EnumerationNode::soundEntries()
{
    Trail &trail = map().trail();
    trail.spend(entries.all().size());
    std::vector<EnumEntryNode *> sound;
    for (std::size_t place = 0; place < entries.all().size(); ++place) {
        try {
            sound.push_back(&nodeAt(place));
        } catch (const GenericException &) {
            trail.spend(limits::stepsPerNode); // the node map says why when it is asked for this entry
        }
    }
    return sound;
}

/// One whose conditions the description gets wrong is not.
bool EnumerationNode::isAvailable(const EnumEntryNode &entry) const
{
    try {
        return isReadable(accessOf(entry));
    } catch (const GenericException &) {
        if (map().trail().isSpent())
            throw;
        return false;
    }
}

std::int64_t EnumerationNode::GetIntValue(bool verify, bool ignoreCache)
{
    const Trail::Call call{map().trail()};
    requireReadable();
    const std::int64_t present = *number("", {ignoreCache}).truncated();
    if (verify && entries.withValue(present).empty())
        fail<OutOfRangeException>(std::to_string(present) + " is the value of no entry");
    return present;
}

void EnumerationNode::SetIntValue(std::int64_t newValue, bool verify)
{
    const Trail::Call call{map().trail()};
    requireWritable();
    if (verify)
        requireEntry(newValue);
    setNumber("", newValue);
}

void EnumerationNode::requireEntry(std::int64_t wanted)
{
    const EnumEntryNode *const entry = entryOf(wanted);
    if (entry == nullptr)
        fail<OutOfRangeException>(std::to_string(wanted) + " is the value of no entry");
    const EAccessMode mode = accessOf(*entry);
    if (!isReadable(mode))
        fail<AccessException>("its entry '" + shown(entry->symbolic()) + "' is not " +
                              (mode == NI ? "implemented" : "available at present"));
}

IEnumEntry *EnumerationNode::GetEntryByName(const gcstring &symbolic)
{
    return nodeOf(entries.withSymbolic(std::string_view{symbolic}));
}

IEnumEntry *EnumerationNode::GetEntry(std::int64_t wanted)
{
    return entryOf(wanted);
}

IEnumEntry *EnumerationNode::GetCurrentEntry(bool verify, bool ignoreCache)
{
    const Trail::Call call{map().trail()};
    return entryOf(GetIntValue(verify, ignoreCache));
}

Node *EnumerationNode::find(std::string_view name)
{
    return nodeOf(entries.withName(name));
}

EnumEntryNode *EnumerationNode::nodeOf(EntryList::Found found)
{
    if (found.entry == nullptr)
        return nullptr;
    if (found.isDoubled)
        fail<PropertyException>("its entry '" + shown(found.entry->name) + "' is defined more than once");
    return dynamic_cast<EnumEntryNode *>(&map().nodeOf(found.entry->element));
}

EnumEntryNode &EnumerationNode::nodeAt(std::size_t place)
{
    return dynamic_cast<EnumEntryNode &>(map().nodeOf(entries.all()[place].element));
}

EAccessMode EnumerationNode::accessOf(const EnumEntryNode &entry)
{
    return entry.accessMode("EnumEntry", {});
}

/// Cameras list one value several times, of which one entry is available in each of their modes.
EnumEntryNode *EnumerationNode::entryOf(std::int64_t wanted)
{
    const std::span<const std::size_t> places = entries.withValue(wanted);
    if (places.empty())
        return nullptr;
    if (places.size() == 1)
        return &nodeAt(places.front());
    const Trail::Step step{map().trail(), *this, Aspect::Entry, "EnumEntry"};
    const auto available = std::ranges::find_if(
        places, [this](std::size_t place) { return isReadable(accessOf(nodeAt(place))); });
    return &nodeAt(available != places.end() ? *available : places.front());
}

Number EnumerationNode::readMinimum()
{
    const std::vector<std::size_t> &places = entries.byValue();
    return places.empty() ? Node::readMinimum() : *entries.all()[places.front()].value;
}

Number EnumerationNode::readMaximum()
{
    const std::vector<std::size_t> &places = entries.byValue();
    return places.empty() ? Node::readMaximum() : *entries.all()[places.back()].value;
}

Number EnumerationNode::readNumber(Reading reading)
{
    const std::int64_t present = value.value(reading);
    return reading.ignoreCache || !isSelfClearing(present) ? present : value.value({.ignoreCache = true});
}

bool EnumerationNode::isSelfClearing(std::int64_t present) const
{
    const std::span<const std::size_t> places = entries.withValue(present);
    map().trail().spend(places.size());
    return std::ranges::any_of(places,
                               [this](std::size_t place) { return entries.all()[place].isSelfClearing; });
}

EnumEntryNode &EnumerationNode::entryOfPresent(Reading reading)
{
    const std::int64_t present = *readNumber(reading).truncated();
    if (EnumEntryNode *const entry = entryOf(present))
        return *entry;
    fail<OutOfRangeException>(std::to_string(present) + " is the value of no entry");
}

double EnumerationNode::quantity(const char *by, Reading reading)
{
    const Trail::Step step{map().trail(), *this, Aspect::Value, by};
    return entryOfPresent(reading).GetNumericValue();
}

void EnumerationNode::setQuantity(const char *by, double wanted)
{
    const Trail::Step step{map().trail(), *this, Aspect::Write, by};
    EnumEntryNode *nearest = nullptr;
    double distance = std::numeric_limits<double>::infinity();
    for (EnumEntryNode *const entry : soundEntries()) {
        const double own = std::abs(entry->GetNumericValue() - wanted);
        if (!(own < distance) || !isAvailable(*entry))
            continue;
        nearest = entry;
        distance = own;
    }
    if (nearest == nullptr)
        refuseQuantity(wanted);
    value.setValue(nearest->GetValue());
}

/// What is no number, or endless, is near to none.
void EnumerationNode::refuseQuantity(double wanted)
{
    const auto [lowest, highest] = quantities();
    if (!std::isfinite(wanted))
        refuseOutside(wanted, lowest, highest);
    fail<AccessException>("none of its entries is available at present to take " + withUnit(wanted) +
                          ", of those from " + withUnit(lowest) + " to " + withUnit(highest));
}

std::pair<double, double> EnumerationNode::quantities()
{
    const std::vector<EnumEntryNode *> sound = soundEntries();
    if (sound.empty())
        fail<PropertyException>("no entries, so it has no range");
    const auto [lowest, highest] = std::ranges::minmax(sound, {}, &EnumEntryNode::GetNumericValue);
    return {lowest->GetNumericValue(), highest->GetNumericValue()};
}

std::string EnumerationNode::readText(Reading reading)
{
    return entryOfPresent(reading).symbolic();
}

void EnumerationNode::writeText(const std::string &symbolic)
{
    EnumEntryNode *const entry = nodeOf(entries.withSymbolic(symbolic));
    if (entry == nullptr)
        fail<OutOfRangeException>("'" + shown(symbolic) + "' is none of its entries");
    value.setValue(entry->GetValue());
}

std::int64_t EnumerationNode::readMaximumLength()
{
    return limits::registerLength;
}

EAccessMode EnumerationNode::ownAccessMode(AccessQuestion question) const
{
    return value.link() != nullptr ? value.link()->accessMode(question) : RW;
}

} // namespace GenApi_3_2_TVN
