// SPDX-License-Identifier: MIT
// All functions of the standard, for a producer that must have what its version asks for. Those that the back end calls
// are defined in LiarModule.cpp, and of two definitions the weak one goes.
#include "GenTL.h"

#define UNCALLED(name)                                                                                       \
    extern "C" __attribute__((weak, visibility("default"))) GC_ERROR name()                                  \
    {                                                                                                        \
        return GC_ERR_NOT_IMPLEMENTED;                                                                       \
    }
#include "Functions.inc"
