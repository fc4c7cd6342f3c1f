// SPDX-License-Identifier: MIT
// What all register kinds share: where the register lies, its bytes on the device, and their cache.
#pragma once

#include "Link.h"
#include "Node.h"

#include <pugixml.hpp>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace GenApi_3_2_TVN {

class PortNode;

/// The register children of one element. It is a part of the node that owns it.
class Register
{
public:
    Register(Node &owner, pugi::xml_node element);

    /// \return the bytes, good until the next call of this register; what a port did not deliver is zero
    /// \throws GenericException  the place can't be had or no port is connected
    /// What the port throws passes through.
    std::span<const std::uint8_t> read(Reading reading);
    /// Drops all caches of the node map, its own too: a device may round or refuse what it is given, so what
    /// it holds now is known only by reading it again.
    void write(std::span<const std::uint8_t> bytes);

    /// In bytes, at least 1 and at most limits::registerLength.
    std::int64_t readLength() const;
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
        std::uint64_t pollClock = 0;
        bool isFilled = false;
    };

    void addAddress(pugi::xml_node child);
    void addIndex(pugi::xml_node child);
    bool statedCachable() const;
    std::uint64_t address(std::int64_t byteCount) const;
    std::int64_t indexOffset(const Index &index, std::int64_t byteCount) const;
    PortNode &port() const;
    bool isCached(std::uint64_t address, std::int64_t byteCount) const;

    Node &owner;
    std::vector<std::int64_t> addresses; ///< from 2^63 up as the negative number of the same bits
    std::vector<Link> addressLinks;      ///< pAddress and formulas that stand inline
    std::vector<Index> indexes;
    IntegerSource length;
    std::optional<Link> pPort;
    EAccessMode statedAccessMode;
    bool isCachable;
    std::optional<std::int64_t> pollingTimeMs;
    Cache cache;
};

} // namespace GenApi_3_2_TVN
