// SPDX-License-Identifier: MIT
// Nodes of the kind Category: the tree in which a description presents its features.
#pragma once

#include "INode.h"

namespace GenApi_3_2_TVN {

class ICategory : virtual public IBase
{
public:
    /// Fills \p features, in the order of the description, with the nodes that the category lists. A listed
    /// name that no node bears is passed over.
    virtual void GetFeatures(NodeList_t &features) const = 0;
};

} // namespace GenApi_3_2_TVN
