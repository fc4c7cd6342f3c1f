// SPDX-License-Identifier: MIT
// The functions of the scripted producer that only note their calls. It does not tell its version, so that it
// needs no more functions than the tests call.
#include "Export.h"

EXPORTED GC_ERROR GCGetInfo(TL_INFO_CMD command, INFO_DATATYPE * /*type*/, void * /*buffer*/,
                            std::size_t * /*size*/)
{
    note(__func__, command);
    return GC_ERR_NOT_IMPLEMENTED;
}

EXPORTED GC_ERROR GCInitLib()
{
    note(__func__);
    return GC_ERR_SUCCESS;
}

EXPORTED GC_ERROR GCCloseLib()
{
    note(__func__);
    return GC_ERR_SUCCESS;
}
