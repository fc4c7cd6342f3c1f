// SPDX-License-Identifier: MIT
// The made-up error of an absent function, and its way through GCGetLastError.
#include "GenTL_Function.h"

#include <cstring>
#include <string>

namespace GenICam_Interfaces {

namespace {

thread_local std::string lastErrorText;

} // namespace

void clearLastError()
{
    lastErrorCode = GC_ERR_SUCCESS;
    lastErrorText.clear();
}

GC_ERROR setFunctionMissing(const char *text)
{
    lastErrorCode = absentFunctionCode;
    lastErrorText = text;
    return absentFunctionCode;
}

GC_ERROR LastErrorFunction::operator()(GC_ERROR *errorCode, char *text, std::size_t *size) const
{
    if (lastErrorCode == GC_ERR_SUCCESS)
        return entry(errorCode, text, size);
    if (!errorCode || !size)
        return GC_ERR_INVALID_PARAMETER;

    const std::size_t neededSize = lastErrorText.size() + 1;
    if (text) {
        if (*size != 0 && *size < neededSize)
            return GC_ERR_BUFFER_TOO_SMALL;
        std::memcpy(text, lastErrorText.c_str(), neededSize);
    }
    *size = neededSize;
    return GC_ERR_SUCCESS;
}

} // namespace GenICam_Interfaces
