// SPDX-License-Identifier: MIT
// What the entries of a StructReg share. A description may have thousands of entries in one, so its children are gone
// through once, not once for each entry.
#pragma once

#include <pugixml.hpp>

#include <map>
#include <vector>

namespace GenApi_3_2_TVN {

class StructRegs
{
public:
    /// The children of \p structReg that hold for each of its entries: all parts of the address, and the first of every
    /// other tag. There is one more than limits::structRegChildren at most, which then stand for too many.
    const std::vector<pugi::xml_node> &sharedChildren(pugi::xml_node structReg);

private:
    std::map<pugi::xml_node, std::vector<pugi::xml_node>> known;
};

} // namespace GenApi_3_2_TVN
