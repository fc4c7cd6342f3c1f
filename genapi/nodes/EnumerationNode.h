// SPDX-License-Identifier: MIT
// The kind Enumeration: an integer that is kept here or comes from another node, and its named values.
#pragma once

#include "EntryList.h"
#include "IEnumeration.h"
#include "Node.h"
#include "NumberSource.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

    EnumerationNode *asEnumeration() override { return this; }

    // For a float that lies over it: the physical quantity of the present entry, its NumericValue. \p by is the child
    // of the float that leads here.
    double quantity(const char *by, Reading reading);
    /// Writes the value of the entry whose quantity is nearest, of those that are available.
    /// \throws OutOfRangeException  \p wanted is no finite number; AccessException  none is available
    void setQuantity(const char *by, double wanted);
    /// The lowest and the highest of all entries.
    /// \throws PropertyException  there is none
    std::pair<double, double> quantities();

protected:
    /// The device leaves an entry that clears itself without a word, so while that is the present one, it is asked.
    Number readNumber(Reading reading) override;
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
    /// All that can be made.
    std::vector<EnumEntryNode *> soundEntries();
    bool isSelfClearing(std::int64_t value) const;
    EnumEntryNode &entryOfPresent(Reading reading);
    bool isAvailable(const EnumEntryNode &entry) const;
    EnumEntryNode &nodeAt(std::size_t place);
    static EAccessMode accessOf(const EnumEntryNode &entry);
    EnumEntryNode *entryOf(std::int64_t value);
    void requireEntry(std::int64_t value);
    [[noreturn]] void refuseQuantity(double wanted);

    NumberSource<std::int64_t> value;
    EntryList entries;
};

} // namespace GenApi_3_2_TVN
