// SPDX-License-Identifier: MIT
// See the header.
#include "RegisterAccess.h"

#include "NodeMap.h"

namespace GenApi_3_2_TVN {

void RegisterAccess::Set(const std::uint8_t *from, std::int64_t length, bool)
{
    const Trail::Call call{owner.map().trail()};
    owner.requireWritable();
    const Trail::Step step{owner.map().trail(), owner, Aspect::Write, ""};
    requireLength(length);
    bytes.write({from, static_cast<std::size_t>(length)});
}

void RegisterAccess::Get(std::uint8_t *to, std::int64_t length, bool, bool ignoreCache)
{
    const Trail::Call call{owner.map().trail()};
    owner.requireReadable();
    const Trail::Step step{owner.map().trail(), owner, Aspect::Value, ""};
    requireLength(length);
    bytes.read({ignoreCache}, {to, static_cast<std::size_t>(length)});
}

std::int64_t RegisterAccess::GetLength()
{
    const Trail::Step step{owner.map().trail(), owner, Aspect::Max, ""};
    return bytes.readLength();
}

std::int64_t RegisterAccess::GetAddress()
{
    const Trail::Step step{owner.map().trail(), owner, Aspect::Min, ""};
    return static_cast<std::int64_t>(bytes.readAddress());
}

void RegisterAccess::requireLength(std::int64_t length) const
{
    const std::int64_t own = bytes.readLength();
    if (length != own)
        owner.fail<GenICam_3_2_TVN::InvalidArgumentException>(
            std::to_string(length) + " bytes for a register of " + std::to_string(own));
}

} // namespace GenApi_3_2_TVN
