// SPDX-License-Identifier: MIT
#include "FileSync.h"

#include <unistd.h>

namespace fleet::platform {

bool syncFile(int descriptor)
{
    return fsync(descriptor) == 0;
}

} // namespace fleet::platform
