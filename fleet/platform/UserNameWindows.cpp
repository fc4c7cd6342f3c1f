// SPDX-License-Identifier: MIT
#include "UserName.h"

#include <array>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace fleet::platform {

QString userName()
{
    std::array<wchar_t, 257> name{}; // UNLEN and a zero
    auto size = static_cast<DWORD>(name.size());
    return GetUserNameW(name.data(), &size) != 0 ? QString::fromWCharArray(name.data()) : QString();
}

} // namespace fleet::platform
