// SPDX-License-Identifier: MIT
#include "UserName.h"

#include <pwd.h>
#include <unistd.h>

namespace fleet::platform {

QString userName()
{
    const uid_t user = getuid();
    const passwd *const entry = getpwuid(user);
    return entry ? QString::fromLocal8Bit(entry->pw_name) : QString::number(user);
}

} // namespace fleet::platform
