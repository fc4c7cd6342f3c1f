// SPDX-License-Identifier: MIT
// What all register kinds share: where the register lies, its bytes on the device, and their cache.
#pragma once

#include "AddressSum.h"
#include "Link.h"
#include "Node.h"
#include "NumberSource.h"
#include "PortNode.h"
#include "RegisterCache.h"

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
    /// The same for numbers and texts, which a port may have with the bytes of each quadlet in the opposite order.
    void readOrdered(Reading reading, std::span<std::uint8_t> to);
    /// Drops all caches of the node map, its own too: a device may round or refuse what it is given, so what
    /// it holds now is known only by reading it again.
    void write(std::span<const std::uint8_t> bytes);
    void writeOrdered(std::span<std::uint8_t> bytes);

    /// In bytes, at least 1 and at most limits::registerLength.
    std::int64_t readLength() const;
    /// The same for a text, which has no register at all while the length is 0.
    std::int64_t readTextLength() const;
    std::uint64_t readAddress() const { return address(readLength()); }
    EAccessMode accessMode(AccessQuestion question) const;
    bool isWriteOnly() const { return statedAccessMode == WO; }

private:
    struct Index
    {
        Link pIndex;
        std::optional<std::int64_t> offset; ///< written in the description
        std::optional<Link> pOffset;
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
    [[noreturn]] void refuseAddress() const;
    [[noreturn]] void refuseLength(std::int64_t byteCount) const;
    /// Null when the device has to be asked.
    const RegisterCache::Known *keptAt(const RegisterCache::Place &place, Reading reading);
    void readDevice(const RegisterCache::Place &place, std::span<std::uint8_t> to);
    bool isGood(const RegisterCache::Known &known, Reading reading) const;
    bool isPollingDue(const RegisterCache::Known &known) const;
    void swapQuadlets(std::span<std::uint8_t> bytes) const;

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
    RegisterCache::Handle known;      ///< what was read last
    mutable PortNode *port = nullptr; ///< once it is found
};

} // namespace GenApi_3_2_TVN
