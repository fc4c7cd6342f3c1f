// SPDX-License-Identifier: MIT
// The features of one device by name.
#pragma once

#include "INode.h"
#include "IPortStacked.h"

#include <cstdint>

namespace GenApi_3_2_TVN {

/// Made by CNodeMapFactory, ended through IDestroy. A node map has no lock: one thread at a time for each.
class INodeMap
{
public:
    virtual GenICam_3_2_TVN::gcstring GetDeviceName() const = 0;

    /// Lets time pass for registers with a PollingTime: their cached values end when it is over.
    /// \param elapsedTime  milliseconds since the last call; negative counts as none
    virtual void Poll(std::int64_t elapsedTime) = 0;

    /// Fills \p nodes with the named nodes in the order of the description, without those for which GetNode()
    /// throws and without formulas that stand inside registers.
    virtual void GetNodes(NodeList_t &nodes) = 0;

    /// An entry of an enumeration is found as "EnumEntry_" with the enumeration's name, "_" and its own.
    /// \return the node, or null when the description has none of that name
    /// \throws PropertyException  two nodes bear the name, or the node's own children can't be read
    virtual INode *GetNode(const GenICam_3_2_TVN::gcstring &name) = 0;

    /// The number of named nodes, formulas that stand inside registers not counted.
    virtual std::uint64_t GetNumNodes() const = 0;

    /// \param enable  false: every call asks the device anew, whatever the description says of caching
    virtual void EnableCaching(bool enable) = 0;

    /// Drops every cached register value.
    virtual void InvalidateNodes() = 0;

    /// Attaches a port, which stays the caller's and must outlive its use; null detaches.
    /// Without a name, the port node that is named as the device takes it.
    /// \return false when no port node bears the name
    virtual bool Connect(IPortStacked *port) = 0;
    virtual bool Connect(IPortStacked *port, const GenICam_3_2_TVN::gcstring &portName) = 0;
    virtual bool Connect(IPort *port) = 0;
    virtual bool Connect(IPort *port, const GenICam_3_2_TVN::gcstring &portName) = 0;

    /// Checks all formulas of the description without evaluating them.
    /// \param errors  receives a text for each faulty one; may be null
    /// \return true when all can be parsed
    virtual bool ParseSwissKnifes(GenICam_3_2_TVN::gcstring_vector *errors = nullptr) = 0;

protected:
    virtual ~INodeMap() = default;
};

} // namespace GenApi_3_2_TVN
