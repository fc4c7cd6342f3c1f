// SPDX-License-Identifier: MIT
#include "ShieldedProcess.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace fleet::platform {

ShieldedProcess::ShieldedProcess()
{
    setCreateProcessArgumentsModifier([](CreateProcessArguments *arguments) {
        arguments->flags |= CREATE_NEW_PROCESS_GROUP; // which begins with Ctrl-C ignored
    });
}

void ShieldedProcess::setupChildProcess() {} // no code of a child runs before its program

} // namespace fleet::platform
