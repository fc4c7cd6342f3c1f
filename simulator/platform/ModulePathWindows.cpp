// SPDX-License-Identifier: MIT
// The module's path by the Windows loader.
#include "ModulePath.h"

#include <windows.h>

#include <filesystem>
#include <string>

namespace simulator {

std::string modulePath()
{
    static const char anchor = 0;
    HMODULE module = nullptr;
    const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&anchor), &module))
        return {};

    constexpr DWORD longestPath = 32768; // the system's own limit, in characters
    std::wstring path(longestPath, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), longestPath));
    const std::u8string utf8 = std::filesystem::path(path).u8string();
    return {utf8.begin(), utf8.end()};
}

} // namespace simulator
