// SPDX-License-Identifier: MIT
// A port that serves several accesses in one call.
#pragma once

#include "IPort.h"

#include <cstddef>

namespace GenApi_3_2_TVN {

/// One access of a stack.
struct PortAccess
{
    std::int64_t address;
    void *buffer; ///< the caller's, \a length bytes
    std::int64_t length;
};

/// The node map reads and writes one register at a time and so uses the plain operations of such a port.
class IPortStacked : virtual public IPort
{
public:
    /// Serves \p accesses in order and ends at the first failure, which it throws.
    virtual void ReadStacked(const PortAccess *accesses, std::size_t count) = 0;
    virtual void WriteStacked(const PortAccess *accesses, std::size_t count) = 0;
};

} // namespace GenApi_3_2_TVN
