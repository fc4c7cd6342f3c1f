// SPDX-License-Identifier: MIT
// The shared children, with all that they hold weighed: each entry reads and keeps them for itself.
#include "StructRegs.h"

#include "Limits.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace GenApi_3_2_TVN {
namespace {

bool isAddressPart(pugi::xml_node child)
{
    const std::string_view tag = child.name();
    return tag == "Address" || tag == "pAddress" || tag == "IntSwissKnife" || tag == "pIndex";
}

/// Bytes of its tag, its attributes and its text.
std::size_t lengthOf(pugi::xml_node child)
{
    std::size_t length = std::strlen(child.name());
    for (const pugi::xml_attribute attribute : child.attributes())
        length += std::strlen(attribute.name()) + std::strlen(attribute.value());
    for (const pugi::xml_node text : child.children())
        length += std::strlen(text.value());
    return length;
}

StructRegs::Shared collect(pugi::xml_node structReg)
{
    StructRegs::Shared shared;
    std::size_t addressParts = 0;
    std::size_t length = 0;
    for (const pugi::xml_node child : structReg.children()) {
        const bool isPart = isAddressPart(child);
        const bool isKnown = std::ranges::any_of(shared.children, [child](pugi::xml_node one) {
            return std::strcmp(child.name(), one.name()) == 0;
        });
        if (std::strcmp(child.name(), "StructEntry") == 0 || (isKnown && !isPart))
            continue;
        shared.children.push_back(child);
        addressParts += isPart ? 1 : 0;
        length += lengthOf(child);
        shared.isTooMuch = shared.children.size() > limits::structRegChildren ||
                           addressParts > limits::structRegAddressParts || length > limits::structRegLength;
        if (shared.isTooMuch)
            break;
    }
    return shared;
}

} // namespace

const StructRegs::Shared &StructRegs::shared(pugi::xml_node structReg)
{
    const auto found = known.find(structReg);
    return found != known.end() ? found->second : known.emplace(structReg, collect(structReg)).first->second;
}

} // namespace GenApi_3_2_TVN
