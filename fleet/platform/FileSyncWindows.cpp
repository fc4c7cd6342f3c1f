// SPDX-License-Identifier: MIT
#include "FileSync.h"

#include <io.h>

namespace fleet::platform {

bool syncFile(int descriptor)
{
    return _commit(descriptor) == 0;
}

} // namespace fleet::platform
