// SPDX-License-Identifier: MIT
// See the header.
#include "Register.h"

#include "ElementText.h"
#include "Limits.h"
#include "NodeMap.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <string_view>
#include <utility>

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::AccessException;
using GenICam_3_2_TVN::OutOfRangeException;
using GenICam_3_2_TVN::PropertyException;

Register::Register(Node &owner)
    : owner{owner},
      length{owner, "Length", "pLength"},
      pPort{Link::ofChild(owner, "pPort")},
      statedAccessMode{childAccessMode(owner, "AccessMode", RO)},
      isCachable{statedCachable()},
      pollingTimeMs{owner.childInteger("PollingTime")},
      pBlockPolling{Link::ofChild(owner, "pBlockPolling")},
      hasInvalidators{!owner.child("pInvalidator").empty()}
{
    bool hasAddress = false;
    for (const pugi::xml_node child : owner.placeChildren())
        hasAddress = addAddress(child) || hasAddress;
    if (!hasAddress)
        owner.fail<PropertyException>("a register without an address");
    if (!length.isPresent())
        owner.fail<PropertyException>("a register without a length");
    if (!pPort)
        owner.fail<PropertyException>("a register without pPort");
}

bool Register::addAddress(pugi::xml_node child)
{
    const std::string_view tag = child.name();
    if (tag == "Address")
        addConstant(child);
    else if (tag == "pAddress")
        addressLinks.emplace_back(owner, "pAddress", child);
    else if (tag == "IntSwissKnife")
        addressLinks.emplace_back(owner, "IntSwissKnife", child);
    else if (tag == "pIndex")
        addIndex(child);
    else
        return false;
    return true;
}

/// From 2^63 up it arrives as the negative number of the same bits, which its text tells from one that is negative.
void Register::addConstant(pugi::xml_node child)
{
    const std::int64_t constant = owner.numberOf<std::int64_t>(child);
    if (textOf(child).starts_with('-'))
        constants.add(constant);
    else
        constants.addUnsigned(static_cast<std::uint64_t>(constant));
}

void Register::addIndex(pugi::xml_node child)
{
    Index index{Link{owner, "pIndex", child}, std::nullopt, std::nullopt};
    if (child.attribute("Offset"))
        index.offset = owner.attributeOf(child, "Offset");
    else if (const pugi::xml_attribute pOffset = child.attribute("pOffset"))
        index.pOffset = Link{owner, "pOffset", pOffset};
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

void Register::read(Reading reading, std::span<std::uint8_t> to)
{
    const std::uint64_t place = address(std::ssize(to));
    if (reading.ignoreCache || !isCached(place, to.size()))
        return readDevice(place, to);
    std::ranges::copy(cache.bytes, to.begin());
}

/// The cache is empty until the port has delivered. Where it was empty before, nobody knows whether the register has
/// changed, so it counts as changed.
void Register::readDevice(std::uint64_t place, std::span<std::uint8_t> to)
{
    PortNode &port = connectedPort();
    const bool isKnown = std::exchange(cache.isFilled, false) && cache.address == place;
    std::ranges::fill(to, std::uint8_t{0});
    port.Read(to.data(), static_cast<std::int64_t>(place), std::ssize(to));
    if (!isKnown || !std::ranges::equal(cache.bytes, to))
        owner.map().noteChange();
    if (to.size() > limits::cachedRegisterLength || !owner.map().keepBytes(cache.bytes.size(), to.size()))
        return;
    cache.bytes.assign(to.begin(), to.end());
    cache.address = place;
    cache.generation = owner.map().cacheGeneration();
    cache.changes = owner.map().changeCount();
    cache.pollClock = owner.map().pollClock();
    cache.isFilled = true;
}

void Register::write(std::span<const std::uint8_t> bytes)
{
    const std::int64_t byteCount = readLength();
    const std::uint64_t place = address(byteCount);
    if (bytes.size() != static_cast<std::size_t>(byteCount))
        owner.fail<OutOfRangeException>("a value of " + std::to_string(bytes.size()) +
                                        " bytes for a register of " + std::to_string(byteCount));
    connectedPort().Write(bytes.data(), static_cast<std::int64_t>(place), byteCount);
}

/// Which registers a change of an invalidator reaches is not followed: any change that a read finds drops the cache
/// of every register that names invalidators.
bool Register::isCached(std::uint64_t place, std::size_t byteCount) const
{
    const NodeMap &map = owner.map();
    return cache.isFilled && isCachable && map.isCachingEnabled() &&
           cache.generation == map.cacheGeneration() && cache.address == place &&
           cache.bytes.size() == byteCount && (!hasInvalidators || cache.changes == map.changeCount()) &&
           !isTooOld();
}

bool Register::isTooOld() const
{
    if (!pollingTimeMs)
        return false;
    const std::uint64_t age = owner.map().pollClock() - cache.pollClock;
    return age >= static_cast<std::uint64_t>(*pollingTimeMs) && !(pBlockPolling && pBlockPolling->isTrue());
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
    AddressSum sum = constants;
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

PortNode &Register::portNode() const
{
    if (auto *const node = dynamic_cast<PortNode *>(&pPort->node()))
        return *node;
    owner.fail<PropertyException>("pPort names '" + pPort->node().name() + "', which is no port");
}

PortNode &Register::connectedPort() const
{
    PortNode &port = portNode();
    if (!port.isConnected())
        owner.fail<AccessException>("port '" + port.name() + "' is not connected");
    return port;
}

EAccessMode Register::accessMode(AccessQuestion question) const
{
    if (!question.includePort)
        return statedAccessMode;
    return narrower(statedAccessMode, pPort->accessMode(question));
}

} // namespace GenApi_3_2_TVN
