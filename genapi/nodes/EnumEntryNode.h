// SPDX-License-Identifier: MIT
// The kind EnumEntry: one named value of an enumeration.
#pragma once

#include "IEnumEntry.h"
#include "Node.h"

#include <string>

namespace GenApi_3_2_TVN {

class EnumEntryNode : public Node, public IEnumEntry
{
public:
    EnumEntryNode(NodeMap &nodeMap, pugi::xml_node element);

    std::int64_t GetValue() override { return value; }
    GenICam_3_2_TVN::gcstring GetSymbolic() const override
    {
        return GenICam_3_2_TVN::gcstring{std::string_view{symbolic()}};
    }
    double GetNumericValue() override { return numericValue; }
    bool IsSelfClearing() override { return isSelfClearing; }

    std::string symbolic() const { return symbolicOf(xml()); }
    /// The entry's name, where it states no Symbolic.
    static std::string symbolicOf(pugi::xml_node element);

protected:
    Number readNumber(Reading) override { return value; }

private:
    std::int64_t value = 0;
    double numericValue = 0;
    bool isSelfClearing;
};

} // namespace GenApi_3_2_TVN
