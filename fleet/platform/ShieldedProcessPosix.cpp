// SPDX-License-Identifier: MIT
#include "ShieldedProcess.h"

#include <csignal>

namespace fleet::platform {

ShieldedProcess::ShieldedProcess() = default;

void ShieldedProcess::setupChildProcess()
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        std::signal(signal, SIG_IGN);
}

} // namespace fleet::platform
