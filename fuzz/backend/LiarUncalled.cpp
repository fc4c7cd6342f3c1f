// SPDX-License-Identifier: MIT
// The functions of the standard that the back end does not call, for a producer that must have what its version asks
// for. The others are defined in LiarModule.cpp.
#include "GenTL.h"

#define UNCALLED(name)                                                                                       \
    extern "C" __attribute__((visibility("default"))) GC_ERROR name()                                        \
    {                                                                                                        \
        return GC_ERR_NOT_IMPLEMENTED;                                                                       \
    }
#include "Functions.inc"
