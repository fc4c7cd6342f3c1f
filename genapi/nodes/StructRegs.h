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
    struct Shared
    {
        /// All parts of the address, and the first child of every other tag.
        std::vector<pugi::xml_node> children;
        bool isTooMuch = false; ///< a limit is passed, and more was not looked at
    };

    /// What holds for each entry of \p structReg.
    const Shared &shared(pugi::xml_node structReg);

private:
    std::map<pugi::xml_node, Shared> known;
};

} // namespace GenApi_3_2_TVN
