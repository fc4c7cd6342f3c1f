// SPDX-License-Identifier: MIT
#include "AccessStatus.h"

#include "GenTL.h"

std::string accessStatusName(std::int32_t status)
{
    switch (status) {
    case DEVICE_ACCESS_STATUS_UNKNOWN:
        return "Unknown";
    case DEVICE_ACCESS_STATUS_READWRITE:
        return "ReadWrite";
    case DEVICE_ACCESS_STATUS_READONLY:
        return "ReadOnly";
    case DEVICE_ACCESS_STATUS_NOACCESS:
        return "NoAccess";
    case DEVICE_ACCESS_STATUS_BUSY:
        return "Busy";
    case DEVICE_ACCESS_STATUS_OPEN_READWRITE:
        return "OpenReadWrite";
    case DEVICE_ACCESS_STATUS_OPEN_READONLY:
        return "OpenReadOnly";
    default:
        return "Unimplemented item";
    }
}
