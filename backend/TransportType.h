// SPDX-License-Identifier: MIT
// How a camera is attached, as far as the list tells the kinds apart.
#pragma once

#include <cstdint>

/// The values are the positions of the labels that the list shows.
enum class TransportType : std::int32_t
{
    GEV = 0,     ///< the device's TL type text is "GEV"
    U3V = 1,     ///< the device's TL type text is "U3V"
    vOrnEth = 2, ///< never set; it has a place among the labels
    vOrnUSB = 3, ///< never set; it has a place among the labels
    Other = 4,   ///< any other TL type text
    Unknown = 5, ///< not read yet, or could not be read
};
