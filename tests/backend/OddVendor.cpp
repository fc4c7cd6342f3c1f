// SPDX-License-Identifier: MIT
// A producer that names its vendor by a number.
#include "GenTL.h"

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

GC_ERROR GCGetInfo(TL_INFO_CMD command, INFO_DATATYPE *type, void *, std::size_t *)
{
    *type = INFO_DATATYPE_INT32;
    return command == TL_INFO_VENDOR ? GC_ERR_SUCCESS : GC_ERR_NOT_IMPLEMENTED;
}

} // extern "C"
