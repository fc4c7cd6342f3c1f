// SPDX-License-Identifier: MIT
// See the header.
#include "RegisterSpace.h"

#include "FuzzTarget.h"

namespace {

constexpr std::size_t memorySize = 4096;
constexpr std::int64_t servedAddresses = std::int64_t{1} << 32;
constexpr std::int64_t servedLength = std::int64_t{64} << 10;

} // namespace

RegisterSpace::RegisterSpace(std::string_view content) : memory(memorySize, 0)
{
    for (std::size_t place = 0; !content.empty() && place < memorySize; ++place)
        memory[place] = static_cast<std::uint8_t>(content[place % content.size()]);
}

void RegisterSpace::Read(void *buffer, std::int64_t address, std::int64_t length)
{
    requireServed(address, length);
    auto *const bytes = static_cast<std::uint8_t *>(buffer);
    for (std::int64_t place = 0; place < length; ++place)
        bytes[place] = at(address + place);
}

void RegisterSpace::Write(const void *buffer, std::int64_t address, std::int64_t length)
{
    requireServed(address, length);
    const auto *const bytes = static_cast<const std::uint8_t *>(buffer);
    for (std::int64_t place = 0; place < length; ++place)
        at(address + place) = bytes[place];
}

void RegisterSpace::requireServed(std::int64_t address, std::int64_t length)
{
    require(length > 0, "an access of no bytes");
    if (address < 0 || address >= servedAddresses || length > servedLength)
        throw Refusal{};
}

std::uint8_t &RegisterSpace::at(std::int64_t address)
{
    return memory[static_cast<std::size_t>(address) % memorySize];
}
