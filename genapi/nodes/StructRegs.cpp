// SPDX-License-Identifier: MIT
// See the header.
#include "StructRegs.h"

#include "Limits.h"

#include <algorithm>
#include <string_view>

namespace GenApi_3_2_TVN {
namespace {

bool isAddressPart(std::string_view tag)
{
    return tag == "Address" || tag == "pAddress" || tag == "IntSwissKnife" || tag == "pIndex";
}

std::vector<pugi::xml_node> collect(pugi::xml_node structReg)
{
    std::vector<pugi::xml_node> shared;
    for (const pugi::xml_node child : structReg.children()) {
        const std::string_view tag = child.name();
        const bool isKnown =
            std::ranges::any_of(shared, [tag](pugi::xml_node one) { return tag == one.name(); });
        if (tag == "StructEntry" || (isKnown && !isAddressPart(tag)))
            continue;
        shared.push_back(child);
        if (shared.size() > limits::structRegChildren)
            break;
    }
    return shared;
}

} // namespace

const std::vector<pugi::xml_node> &StructRegs::sharedChildren(pugi::xml_node structReg)
{
    const auto found = known.find(structReg);
    return found != known.end() ? found->second : known.emplace(structReg, collect(structReg)).first->second;
}

} // namespace GenApi_3_2_TVN
