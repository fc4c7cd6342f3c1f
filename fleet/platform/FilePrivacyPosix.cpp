// SPDX-License-Identifier: MIT
#include "FilePrivacy.h"

#include <sys/stat.h>
#include <unistd.h>

namespace fleet::platform {

std::string privacyFault(const std::string &path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        return {};
    if (status.st_uid != geteuid() && status.st_uid != 0)
        return "It belongs to another user. Take it over, then: chmod 600 '" + path + "'";
    if ((status.st_mode & (S_IRGRP | S_IROTH)) != 0)
        return "Others can read it. Mend it by: chmod 600 '" + path + "'";
    return {};
}

} // namespace fleet::platform
