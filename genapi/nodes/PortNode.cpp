// SPDX-License-Identifier: MIT
// See the header.
#include "PortNode.h"

#include "NodeMap.h"

namespace GenApi_3_2_TVN {

void PortNode::Read(void *buffer, std::int64_t address, std::int64_t length)
{
    requirePort().Read(buffer, address, length);
}

/// Caches end before the write, so that they are gone also when it fails half way.
void PortNode::Write(const void *buffer, std::int64_t address, std::int64_t length)
{
    map().registers().forget();
    requirePort().Write(buffer, address, length);
}

EAccessMode PortNode::ownAccessMode(AccessQuestion) const
{
    return connected != nullptr ? connected->GetAccessMode() : NA;
}

IPort &PortNode::requirePort() const
{
    if (connected == nullptr)
        fail<GenICam_3_2_TVN::AccessException>("no port is connected");
    return *connected;
}

} // namespace GenApi_3_2_TVN
