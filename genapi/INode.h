// SPDX-License-Identifier: MIT
// One node of a node map, whatever its kind. A dynamic cast to the interface of the kind reaches its value.
#pragma once

#include "IBase.h"
#include "gcstring.h"

#include <vector>

namespace GenApi_3_2_TVN {

/// Nodes belong to their node map and live as long as it does.
class INode : virtual public IBase
{
public:
    /// The name that finds it in the node map. A formula that stands inside a register without a name of its
    /// own answers the register's name with "/IntSwissKnife" behind it.
    virtual GenICam_3_2_TVN::gcstring GetName() const = 0;

    /// Reads the description of the node.
    /// \param name       "NodeType" for the kind (the name of the XML element), "Name", or the tag of a child
    /// \param value      receives the text; texts of several children of one tag are joined by tabs
    /// \param attribute  receives the first attribute of those children, joined likewise
    /// \return false, with both texts left as they were, when the description has nothing of that name
    virtual bool GetProperty(const GenICam_3_2_TVN::gcstring &name, GenICam_3_2_TVN::gcstring &value,
                             GenICam_3_2_TVN::gcstring &attribute) const = 0;

    /// Drops every cached register value of the node map, those that depend on this node among them.
    virtual void InvalidateNode() = 0;
};

using NodeList_t = std::vector<INode *>;

} // namespace GenApi_3_2_TVN
