// SPDX-License-Identifier: MIT
// The nodes of one device. What is the same for all devices of a model lies in the shared description; here
// are only the nodes that were asked for, their cached registers and the port.
#pragma once

#include "Description.h"
#include "IDestroy.h"
#include "INodeMap.h"
#include "Node.h"
#include "RegisterCache.h"
#include "StructRegs.h"
#include "Trail.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace GenApi_3_2_TVN {

class NodeMap : public INodeMap, public IDestroy
{
public:
    NodeMap(std::shared_ptr<const Description> description, const GenICam_3_2_TVN::gcstring &deviceName,
            bool enableCaching);
    ~NodeMap() override = default;

    GenICam_3_2_TVN::gcstring GetDeviceName() const override { return deviceName; }
    void Poll(std::int64_t elapsedTime) override;
    void GetNodes(NodeList_t &nodes) override;
    INode *GetNode(const GenICam_3_2_TVN::gcstring &name) override;
    std::uint64_t GetNumNodes() const override { return description->nodeCount(); }
    void EnableCaching(bool enable) override { cachingEnabled = enable; }
    void InvalidateNodes() override { registers_.forget(); }
    bool Connect(IPortStacked *port) override;
    bool Connect(IPortStacked *port, const GenICam_3_2_TVN::gcstring &portName) override;
    bool Connect(IPort *port) override;
    bool Connect(IPort *port, const GenICam_3_2_TVN::gcstring &portName) override;
    bool ParseSwissKnifes(GenICam_3_2_TVN::gcstring_vector *errors) override;
    void Destroy() override { delete this; }

    /// As GetNode().
    Node *find(std::string_view name);
    /// The node of an element of the description, made if it is the first time.
    /// \throws PropertyException  the element is no node; each time for the same reason
    Node &nodeOf(pugi::xml_node element);

    Trail &trail() { return trail_; }
    StructRegs &structRegs() { return structRegs_; }

    RegisterCache &registers() { return registers_; }
    const RegisterCache &registers() const { return registers_; }
    bool isCachingEnabled() const { return cachingEnabled; }
    /// Whether a node is being made: its faults have nothing to do with the call that led to it.
    bool isMakingNode() const { return isMaking; }

private:
    Node *findEntry(std::string_view name);
    void requireSingle(const Description::Found &found, std::string_view name) const;
    std::unique_ptr<Node> make(pugi::xml_node element);

    std::shared_ptr<const Description> description;
    GenICam_3_2_TVN::gcstring deviceName;
    bool cachingEnabled;
    bool isMaking = false;
    Trail trail_;
    RegisterCache registers_{trail_};
    StructRegs structRegs_;
    std::map<pugi::xml_node, std::unique_ptr<Node>> nodes;
    std::map<pugi::xml_node, std::string> failures; ///< what is wrong with those that can't be made
};

} // namespace GenApi_3_2_TVN
