// SPDX-License-Identifier: MIT
// Nodes of the kind Enumeration: an integer of which some values have names.
#pragma once

#include "INode.h"

#include <cstdint>

namespace GenApi_3_2_TVN {

class IEnumEntry;

using StringList_t = GenICam_3_2_TVN::gcstring_vector;

/// Errors and arguments as for IInteger. Entries are nodes of the same node map.
class IEnumeration : virtual public IBase
{
public:
    /// Fills \p symbolics with the names of the entries that are available at present, in the order of the
    /// description.
    virtual void GetSymbolics(StringList_t &symbolics) = 0;
    /// Fills \p entries with all entries in the order of the description, available or not, without those that the
    /// description gets wrong.
    virtual void GetEntries(NodeList_t &entries) = 0;
    /// \param verify  check first that an entry of this value is available
    virtual void SetIntValue(std::int64_t value, bool verify = true) = 0;
    /// While its entry clears itself, the device is asked also for what is cached.
    /// \param verify  check that an entry has the value
    virtual std::int64_t GetIntValue(bool verify = false, bool ignoreCache = false) = 0;
    /// \return null when no entry has the name
    /// \throws PropertyException  several have
    virtual IEnumEntry *GetEntryByName(const GenICam_3_2_TVN::gcstring &symbolic) = 0;
    /// Of several entries with one value the first one that is available.
    /// \return null when no entry has the value
    virtual IEnumEntry *GetEntry(std::int64_t value) = 0;
    /// The entry of the present value; null when none has it.
    virtual IEnumEntry *GetCurrentEntry(bool verify = false, bool ignoreCache = false) = 0;
};

} // namespace GenApi_3_2_TVN
