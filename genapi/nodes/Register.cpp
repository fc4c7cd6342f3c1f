// SPDX-License-Identifier: MIT
// See the header.
#include "Register.h"

#include "AddressSum.h"
#include "ElementText.h"
#include "Limits.h"
#include "NodeMap.h"
#include "PortNode.h"

#include <limits>
#include <string_view>

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::AccessException;
using GenICam_3_2_TVN::OutOfRangeException;
using GenICam_3_2_TVN::PropertyException;

Register::Register(Node &owner, pugi::xml_node element)
    : owner{owner},
      length{owner, "Length", "pLength"},
      pPort{Link::ofChild(owner, "pPort")},
      statedAccessMode{childAccessMode(owner, "AccessMode", RO)},
      isCachable{statedCachable()},
      pollingTimeMs{owner.childInteger("PollingTime")}
{
    for (const pugi::xml_node child : element.children())
        addAddress(child);
    if (addresses.empty() && addressLinks.empty() && indexes.empty())
        owner.fail<PropertyException>("a register without an address");
    if (!length.isPresent())
        owner.fail<PropertyException>("a register without a length");
    if (!pPort)
        owner.fail<PropertyException>("a register without pPort");
}

void Register::addAddress(pugi::xml_node child)
{
    const std::string_view tag = child.name();
    if (tag == "Address")
        addresses.push_back(owner.integerOf(child));
    else if (tag == "pAddress")
        addressLinks.emplace_back(owner, "pAddress", child);
    else if (tag == "IntSwissKnife")
        addressLinks.emplace_back(owner, "IntSwissKnife", child);
    else if (tag == "pIndex")
        addIndex(child);
}

void Register::addIndex(pugi::xml_node child)
{
    Index index{Link{owner, "pIndex", child}, std::nullopt, std::nullopt};
    if (const pugi::xml_attribute offset = child.attribute("Offset")) {
        index.offset = parseInteger(offset.value());
        if (!index.offset)
            owner.fail<PropertyException>("pIndex: '" + std::string{offset.value()} +
                                          "' is not a 64-bit integer");
    } else if (const pugi::xml_attribute pOffset = child.attribute("pOffset")) {
        index.pOffset = Link{owner, "pOffset", pOffset.value()};
    }
    indexes.push_back(index);
}

bool Register::statedCachable() const
{
    const std::string text = owner.childText("Cachable").value_or("WriteThrough");
    if (text == "WriteThrough" || text == "WriteAround")
        return true;
    if (text == "NoCache")
        return false;
    owner.fail<PropertyException>("Cachable: '" + text +
                                  "' is none of NoCache, WriteThrough and WriteAround");
}

std::span<const std::uint8_t> Register::read(Reading reading)
{
    const std::int64_t byteCount = readLength();
    const std::uint64_t place = address(byteCount);
    if (!reading.ignoreCache && isCached(place, byteCount))
        return cache.bytes;
    PortNode &connected = port();
    cache.isFilled = false;
    cache.bytes.assign(static_cast<std::size_t>(byteCount), 0);
    connected.Read(cache.bytes.data(), static_cast<std::int64_t>(place), byteCount);
    cache.address = place;
    cache.generation = owner.map().cacheGeneration();
    cache.pollClock = owner.map().pollClock();
    cache.isFilled = true;
    return cache.bytes;
}

/// Caches end before the write, so that they are gone also when it fails half way.
void Register::write(std::span<const std::uint8_t> bytes)
{
    const std::int64_t byteCount = readLength();
    const std::uint64_t place = address(byteCount);
    if (bytes.size() != static_cast<std::size_t>(byteCount))
        owner.fail<OutOfRangeException>("a value of " + std::to_string(bytes.size()) +
                                        " bytes for a register of " + std::to_string(byteCount));
    PortNode &connected = port();
    owner.map().dropCaches();
    connected.Write(bytes.data(), static_cast<std::int64_t>(place), byteCount);
}

bool Register::isCached(std::uint64_t place, std::int64_t byteCount) const
{
    const NodeMap &map = owner.map();
    const bool isTooOld =
        pollingTimeMs && map.pollClock() - cache.pollClock >= static_cast<std::uint64_t>(*pollingTimeMs);
    return cache.isFilled && isCachable && map.isCachingEnabled() && !isTooOld &&
           cache.generation == map.cacheGeneration() && cache.address == place &&
           cache.bytes.size() == static_cast<std::size_t>(byteCount);
}

std::int64_t Register::readLength() const
{
    const std::int64_t byteCount = length.value({});
    if (byteCount < 1 || byteCount > limits::registerLength)
        owner.fail<PropertyException>("a register of " + std::to_string(byteCount) +
                                      " bytes; possible are 1 to " + std::to_string(limits::registerLength));
    return byteCount;
}

std::uint64_t Register::address(std::int64_t byteCount) const
{
    AddressSum sum;
    for (const std::int64_t constant : addresses)
        sum.addConstant(constant);
    for (const Link &link : addressLinks)
        sum.add(link.integer({}));
    for (const Index &index : indexes)
        sum.addProduct(index.pIndex.integer({}), indexOffset(index, byteCount));
    const std::optional<std::uint64_t> first = sum.result();
    if (!first ||
        *first > std::numeric_limits<std::uint64_t>::max() - static_cast<std::uint64_t>(byteCount - 1))
        owner.fail<OutOfRangeException>("its address lies outside 64 bits");
    return *first;
}

std::int64_t Register::indexOffset(const Index &index, std::int64_t byteCount) const
{
    if (index.pOffset)
        return index.pOffset->integer({});
    return index.offset.value_or(byteCount);
}

PortNode &Register::port() const
{
    auto *const node = dynamic_cast<PortNode *>(&pPort->node());
    if (node == nullptr)
        owner.fail<PropertyException>("pPort names '" + pPort->node().name() + "', which is no port");
    if (!node->isConnected())
        owner.fail<AccessException>("port '" + node->name() + "' is not connected");
    return *node;
}

EAccessMode Register::accessMode(AccessQuestion question) const
{
    if (!question.includePort)
        return statedAccessMode;
    return narrower(statedAccessMode, pPort->node().accessMode("pPort", question));
}

} // namespace GenApi_3_2_TVN
