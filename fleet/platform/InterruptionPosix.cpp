// SPDX-License-Identifier: MIT
#include "Interruption.h"

#include <atomic>
#include <csignal>

namespace fleet::platform {

namespace {

std::atomic<bool> interrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

void onSignal(int)
{
    interrupted = true;
}

} // namespace

void watchInterruption()
{
    struct sigaction action = {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART; // no call of a producer fails because of it
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    // The terminal has gone, such as a lost connection's. nohup ignores it, so that the run goes on.
    struct sigaction before = {};
    if (sigaction(SIGHUP, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
        sigaction(SIGHUP, &action, nullptr);
}

bool isInterrupted()
{
    return interrupted;
}

} // namespace fleet::platform
