// SPDX-License-Identifier: MIT
// The kind Enumeration: an integer that is kept here or comes from another node, and its named values.
#pragma once

#include "EntryList.h"
#include "IEnumeration.h"
#include "Node.h"
#include "NumberSource.h"

#include <string>
#include <string_view>

namespace GenApi_3_2_TVN {

class EnumEntryNode;

class EnumerationNode : public Node, public IEnumeration
{
public:
    EnumerationNode(NodeMap &nodeMap, pugi::xml_node element);

    void GetSymbolics(StringList_t &symbolics) override;
    void GetEntries(NodeList_t &nodes) override;
    void SetIntValue(std::int64_t value, bool verify) override;
    std::int64_t GetIntValue(bool verify, bool ignoreCache) override;
    IEnumEntry *GetEntryByName(const GenICam_3_2_TVN::gcstring &symbolic) override;
    IEnumEntry *GetEntry(std::int64_t value) override;
    IEnumEntry *GetCurrentEntry(bool verify, bool ignoreCache) override;

    /// The entry by its name in the description; null when there is none.
    /// \throws PropertyException  several have the name, or its children can't be read
    Node *find(std::string_view name);

protected:
    Number readNumber(Reading reading) override { return value.value(reading); }
    void writeNumber(Number newValue) override { value.setValue(wholeOf(newValue)); }
    Number readMinimum() override;
    Number readMaximum() override;
    /// The symbolic of the present value.
    std::string readText(Reading reading) override;
    void writeText(const std::string &symbolic) override;
    std::int64_t readMaximumLength() override;
    EAccessMode ownAccessMode(AccessQuestion question) const override;

private:
    EnumEntryNode *nodeOf(EntryList::Found found);
    EnumEntryNode &nodeAt(std::size_t place);
    static EAccessMode accessOf(const EnumEntryNode &entry);
    EnumEntryNode *entryOf(std::int64_t value);
    void requireEntry(std::int64_t value);

    NumberSource<std::int64_t> value;
    EntryList entries;
};

} // namespace GenApi_3_2_TVN
