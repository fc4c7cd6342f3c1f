// SPDX-License-Identifier: MIT
// The nodes of one device. What is the same for all devices of a model lies in the shared description; here
// are only the nodes that were asked for, their cached registers and the port.
#pragma once

#include "Description.h"
#include "IDestroy.h"
#include "INodeMap.h"
#include "Node.h"
#include "StructRegs.h"
#include "Trail.h"

#include <cstdint>
#include <exception>
#include <map>
#include <memory>
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
    void InvalidateNodes() override { dropCaches(); }
    bool Connect(IPortStacked *port) override;
    bool Connect(IPortStacked *port, const GenICam_3_2_TVN::gcstring &portName) override;
    bool Connect(IPort *port) override;
    bool Connect(IPort *port, const GenICam_3_2_TVN::gcstring &portName) override;
    bool ParseSwissKnifes(GenICam_3_2_TVN::gcstring_vector *errors) override;
    void Destroy() override { delete this; }

    /// As GetNode().
    Node *find(std::string_view name);
    /// The node of an element of the description, made if it is the first time.
    /// \throws GenericException  the element is no node; each time the same
    Node &nodeOf(pugi::xml_node element);

    Trail &trail() { return trail_; }
    StructRegs &structRegs() { return structRegs_; }

    // Cached register values are good as long as the generation in which they were read lasts. Any write
    // through the node map ends it: which registers a write changes, only the device knows.
    void dropCaches() { ++generation; }
    std::uint64_t cacheGeneration() const { return generation; }
    /// A read has found a register to hold something else than before: caches that name invalidators end.
    void noteChange() { ++changes; }
    std::uint64_t changeCount() const { return changes; }
    bool isCachingEnabled() const { return cachingEnabled; }
    /// Whether a register may keep \p after bytes in place of \p before; they count as kept then.
    bool keepBytes(std::size_t before, std::size_t after);
    /// Milliseconds that Poll() has counted.
    std::uint64_t pollClock() const { return pollClock_; }

private:
    Node *findEntry(std::string_view name);

    std::shared_ptr<const Description> description;
    GenICam_3_2_TVN::gcstring deviceName;
    bool cachingEnabled;
    std::uint64_t pollClock_ = 0;
    std::uint64_t generation = 0;
    std::uint64_t changes = 0;
    std::size_t keptBytes = 0;
    Trail trail_;
    StructRegs structRegs_;
    std::map<pugi::xml_node, std::unique_ptr<Node>> nodes;
    std::map<pugi::xml_node, std::exception_ptr> failures;
};

} // namespace GenApi_3_2_TVN
