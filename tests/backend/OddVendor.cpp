// SPDX-License-Identifier: MIT
// A producer that names its vendor by a number.
#include "GenTL.h"

#include <cstring>

extern "C" {

GC_ERROR GCInitLib()
{
    return GC_ERR_SUCCESS;
}
GC_ERROR GCCloseLib()
{
    return GC_ERR_SUCCESS;
}
GC_ERROR GCGetLastError(GC_ERROR *, char *, std::size_t *)
{
    return GC_ERR_NO_DATA;
}

GC_ERROR GCGetInfo(TL_INFO_CMD command, INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    if (command != TL_INFO_VENDOR)
        return GC_ERR_NOT_IMPLEMENTED;
    const std::int32_t vendor = 7;
    *type = INFO_DATATYPE_INT32;
    *size = sizeof vendor;
    if (buffer)
        std::memcpy(buffer, &vendor, sizeof vendor);
    return GC_ERR_SUCCESS;
}

} // extern "C"
