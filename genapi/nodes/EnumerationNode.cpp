// SPDX-License-Identifier: MIT
// See the header.
#include "EnumerationNode.h"

#include "EnumEntryNode.h"
#include "Limits.h"
#include "NodeMap.h"

#include <algorithm>

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
    nodes.clear();
    for (std::size_t place = 0; place < entries.all().size(); ++place) {
        try {
            nodes.push_back(&nodeAt(place));
        } catch (const GenericException &) {
            continue; // the node map says why when it is asked for this entry
        }
    }
}

void EnumerationNode::GetSymbolics(StringList_t &symbolics)
{
    NodeList_t nodes;
    GetEntries(nodes);
    StringList_t found;
    const Trail::Step step{map().trail(), *this, Aspect::Entry, ""};
    for (INode *const node : nodes) {
        const auto &entry = dynamic_cast<EnumEntryNode &>(*node);
        try {
            if (isReadable(accessOf(entry)))
                found.push_back(entry.GetSymbolic());
        } catch (const GenericException &) {
            if (map().trail().isSpent())
                throw;
        }
    }
    symbolics = found;
}

std::int64_t EnumerationNode::GetIntValue(bool verify, bool ignoreCache)
{
    requireReadable();
    const std::int64_t present = *number("", {ignoreCache}).truncated();
    if (verify && entries.withValue(present).empty())
        fail<OutOfRangeException>(std::to_string(present) + " is the value of no entry");
    return present;
}

void EnumerationNode::SetIntValue(std::int64_t newValue, bool verify)
{
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
        fail<AccessException>("its entry '" + entry->symbolic() + "' is not " +
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
        fail<PropertyException>("its entry '" + std::string{found.entry->name} +
                                "' is defined more than once");
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

std::string EnumerationNode::readText(Reading reading)
{
    const std::int64_t present = value.value(reading);
    const EnumEntryNode *const entry = entryOf(present);
    if (entry == nullptr)
        fail<OutOfRangeException>(std::to_string(present) + " is the value of no entry");
    return entry->symbolic();
}

void EnumerationNode::writeText(const std::string &symbolic)
{
    EnumEntryNode *const entry = nodeOf(entries.withSymbolic(symbolic));
    if (entry == nullptr)
        fail<OutOfRangeException>("'" + symbolic + "' is none of its entries");
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
