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
    owner.fail<PropertyException>("Cachable: '" + shown(text) +
                                  "' is none of NoCache, WriteThrough and WriteAround");
}

void Register::read(Reading reading, std::span<std::uint8_t> to)
{
    const std::uint64_t first = address(std::ssize(to));
    const RegisterCache::Place place{&connectedPort(), first, to.size()};
    if (const RegisterCache::Known *const kept = isCachable ? keptAt(place, reading) : nullptr)
        std::ranges::copy(kept->bytes, to.begin());
    else
        readDevice(place, to);
}

/// To ask what blocks the polling may make room in the cache, read this very place, or find an invalidator changed.
const RegisterCache::Known *Register::keptAt(const RegisterCache::Place &place, Reading reading)
{
    RegisterCache &cache = owner.map().registers();
    const RegisterCache::Known *kept = cache.find(place, known);
    if (kept != nullptr && isGood(*kept, reading)) {
        if (!isPollingDue(*kept))
            return kept;
        const bool isBlocked = pBlockPolling && pBlockPolling->isTrue();
        kept = cache.find(place, known);
        if (kept != nullptr && isGood(*kept, reading) && (isBlocked || !isPollingDue(*kept)))
            return kept;
    }
    return cache.findAround(place, known);
}

void Register::readDevice(const RegisterCache::Place &place, std::span<std::uint8_t> to)
{
    RegisterCache &cache = owner.map().registers();
    std::ranges::fill(to, std::uint8_t{0});
    try {
        connectedPort().Read(to.data(), static_cast<std::int64_t>(place.address), std::ssize(to));
    } catch (...) {
        cache.keepFailure(place);
        throw;
    }
    cache.keep(place, to, known);
}

void Register::readOrdered(Reading reading, std::span<std::uint8_t> to)
{
    read(reading, to);
    swapQuadlets(to);
}

void Register::writeOrdered(std::span<std::uint8_t> bytes)
{
    swapQuadlets(bytes);
    write(bytes);
}

/// The bytes behind the last whole quadlet are swapped among themselves.
void Register::swapQuadlets(std::span<std::uint8_t> bytes) const
{
    constexpr std::size_t quadlet = 4;
    if (!portNode().swapsBytes())
        return;
    for (; !bytes.empty(); bytes = bytes.subspan(std::min(quadlet, bytes.size())))
        std::ranges::reverse(bytes.first(std::min(quadlet, bytes.size())));
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

/// Within one call even an invalidator does not make a place be asked twice. Which registers a change of one reaches is
/// not followed: any change that a call finds ends what earlier calls have read of every register that names invalidators.
bool Register::isGood(const RegisterCache::Known &what, Reading reading) const
{
    const NodeMap &map = owner.map();
    const RegisterCache &cache = map.registers();
    if (!what.isFilled)
        return false;
    if (cache.isOfThisCall(what))
        return true;
    return !reading.ignoreCache && map.isCachingEnabled() && cache.isOfNow(what) &&
           (!hasInvalidators || cache.isOfLastChange(what));
}

bool Register::isPollingDue(const RegisterCache::Known &what) const
{
    const RegisterCache &cache = owner.map().registers();
    return pollingTimeMs && !cache.isOfThisCall(what) &&
           cache.age(what) >= static_cast<std::uint64_t>(*pollingTimeMs);
}

std::int64_t Register::readLength() const
{
    const std::int64_t byteCount = readTextLength();
    if (byteCount == 0)
        refuseLength(byteCount);
    return byteCount;
}

std::int64_t Register::readTextLength() const
{
    const std::int64_t byteCount = length.value({});
    if (byteCount < 0 || byteCount > limits::registerLength)
        refuseLength(byteCount);
    return byteCount;
}

void Register::refuseLength(std::int64_t byteCount) const
{
    owner.fail<PropertyException>("a register of " + std::to_string(byteCount) +
                                  " bytes; possible are 1 to " + std::to_string(limits::registerLength));
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
        refuseAddress();
    return *first;
}

/// Where there is no port, that is what the user has to know first.
void Register::refuseAddress() const
{
    connectedPort();
    std::string values;
    std::size_t count = 0;
    const auto add = [&](const Link &link) {
        if (++count <= limits::shownItems)
            values +=
                (count == 1 ? ", where '" : ", '") + link.node().name() + "' is " + link.number({}).text();
    };
    std::ranges::for_each(addressLinks, add);
    for (const Index &index : indexes) {
        add(index.pIndex);
        if (index.pOffset)
            add(*index.pOffset);
    }
    owner.fail<OutOfRangeException>("its address lies outside 64 bits" + values);
}

std::int64_t Register::indexOffset(const Index &index, std::int64_t byteCount) const
{
    if (index.pOffset)
        return index.pOffset->integer({});
    return index.offset.value_or(byteCount);
}

PortNode &Register::portNode() const
{
    if (port == nullptr)
        port = dynamic_cast<PortNode *>(&pPort->node());
    if (port != nullptr)
        return *port;
    owner.fail<PropertyException>("pPort names '" + pPort->node().name() + "', which is no port");
}

PortNode &Register::connectedPort() const
{
    PortNode &node = portNode();
    if (!node.isConnected())
        owner.fail<AccessException>("port '" + node.name() + "' is not connected");
    return node;
}

EAccessMode Register::accessMode(AccessQuestion question) const
{
    if (!question.includePort)
        return statedAccessMode;
    return narrower(statedAccessMode, pPort->accessMode(question));
}

} // namespace GenApi_3_2_TVN
