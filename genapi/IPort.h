// SPDX-License-Identifier: MIT
// The road from the node map to a device: registers are read and written through an IPort, the caller's.
#pragma once

#include "IBase.h"

#include <cstdint>

namespace GenApi_3_2_TVN {

enum EYesNo : int
{
    No = 0,
    Yes = 1,
    _UndefinedYesNo = 2
};

/// A register space. Addresses are the device's; the layer passes those from 2^63 up as the negative number
/// of the same bits. Exceptions of an implementation reach the caller of a node unchanged.
class IPort : virtual public IBase
{
public:
    /// \param length  bytes to read; \p buffer, the caller's, holds as many
    virtual void Read(void *buffer, std::int64_t address, std::int64_t length) = 0;
    /// \param length  bytes to write from \p buffer, the caller's
    virtual void Write(const void *buffer, std::int64_t address, std::int64_t length) = 0;
};

/// A port that can be told its node.
class IPortConstruct : virtual public IPort
{
public:
    /// \param port  the port node, which stays its node map's; null forgets it
    virtual void SetPortImpl(IPort *port) = 0;
    virtual EYesNo GetSwapEndianess() = 0;
};

/// Writes that were recorded, to be done again on a port.
class IPortWriteList
{
public:
    virtual ~IPortWriteList() = default;
    virtual void Replay(IPort *port) = 0;
};

/// A port that can repeat recorded writes.
class IPortReplay : virtual public IPort
{
public:
    /// \param writeList   the caller's; null writes nothing
    /// \param invalidate  drop what is cached behind the port's node afterwards
    virtual void Replay(IPortWriteList *writeList, bool invalidate) = 0;
};

} // namespace GenApi_3_2_TVN
