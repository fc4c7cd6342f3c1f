// SPDX-License-Identifier: MIT
#include "FullDisk.h"

#include <sys/resource.h>

#include <csignal>

bool limitFiles(std::int64_t bytes)
{
    std::signal(SIGXFSZ, SIG_IGN); // so that a write fails as on a full disk
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = static_cast<rlim_t>(bytes);
    return setrlimit(RLIMIT_FSIZE, &limit) == 0;
}
