// SPDX-License-Identifier: MIT
// The module's path by the dynamic loader.
#include "ModulePath.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

namespace simulator {

std::string modulePath()
{
    static const char anchor = 0;
    Dl_info info{};
    if (dladdr(&anchor, &info) == 0 || !info.dli_fname)
        return {};
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(info.dli_fname, error);
    return error ? std::string(info.dli_fname) : path.string();
}

} // namespace simulator
