// SPDX-License-Identifier: MIT
// What all register kinds share: where the register lies, its bytes on the device, and their cache.
#pragma once

#include "AddressSum.h"
#include "Link.h"
#include "Node.h"
#include "NumberSource.h"
#include "PortNode.h"

#include <pugixml.hpp>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace GenApi_3_2_TVN {

/// The register children of a node, or of the StructReg around it. It is a part of the node that owns it.
class Register
{
public:
    explicit Register(Node &owner);

    /// The length is asked once and then belongs to the call: a device may answer otherwise a moment later.
    /// \param to  as long as readLength() has told; what a port does not deliver is zero
    /// \throws GenericException  the place can't be had or no port is connected
    /// What the port throws passes through, and \p to holds nothing of use then.
    void read(Reading reading, std::span<std::uint8_t> to);
    /// Drops all caches of the node map, its own too: a device may round or refuse what it is given, so what
    /// it holds now is known only by reading it again.
    void write(std::span<const std::uint8_t> bytes);

    /// In bytes, at least 1 and at most limits::registerLength.
    std::int64_t readLength() const;
    std::uint64_t readAddress() const { return address(readLength()); }
    /// Whether the port has numbers in the byte order that their nodes do not state.
    bool areSwapped() const { return portNode().swapsBytes(); }
    EAccessMode accessMode(AccessQuestion question) const;
    bool isWriteOnly() const { return statedAccessMode == WO; }

private:
    struct Index
    {
        Link pIndex;
        std::optional<std::int64_t> offset; ///< written in the description
        std::optional<Link> pOffset;
    };
    struct Cache
    {
        std::vector<std::uint8_t> bytes;
        std::uint64_t address = 0;
        std::uint64_t generation = 0;
        std::uint64_t changes = 0; ///< that the node map had noticed
        std::uint64_t pollClock = 0;
        bool isFilled = false;
    };

    /// Whether \p child is a part of the address.
    bool addAddress(pugi::xml_node child);
    void addConstant(pugi::xml_node child);
    void addIndex(pugi::xml_node child);
    bool statedCachable() const;
    std::uint64_t address(std::int64_t byteCount) const;
    std::int64_t indexOffset(const Index &index, std::int64_t byteCount) const;
    PortNode &portNode() const;
    PortNode &connectedPort() const;
    void readDevice(std::uint64_t address, std::span<std::uint8_t> to);
    bool isCached(std::uint64_t address, std::size_t byteCount) const;
    bool isTooOld() const;

    Node &owner;
    AddressSum constants;
    std::vector<Link> addressLinks; ///< pAddress and formulas that stand inline
    std::vector<Index> indexes;
    NumberSource<std::int64_t> length;
    std::optional<Link> pPort;
    EAccessMode statedAccessMode;
    bool isCachable;
    std::optional<std::int64_t> pollingTimeMs;
    std::optional<Link> pBlockPolling;
    bool hasInvalidators;
    Cache cache;
};

} // namespace GenApi_3_2_TVN
