// SPDX-License-Identifier: MIT
// What every port and node has: an access mode. It is the root of all dynamic casts between the interfaces,
// so each of them derives from it virtually.
#pragma once

namespace GenApi_3_2_TVN {

/// What can be done with a port or a node. The numbers cross the boundary of the layer.
enum EAccessMode : int
{
    NI = 0, ///< not implemented
    NA = 1, ///< not available at present
    WO = 2, ///< write only
    RO = 3, ///< read only
    RW = 4, ///< read and write
    _UndefinedAccesMode = 5
};

/// The order of the virtual operations here and in the interfaces derived from it is part of the contract.
class IBase
{
public:
    virtual EAccessMode GetAccessMode() const = 0;
    virtual ~IBase() = default;
};

} // namespace GenApi_3_2_TVN
