// SPDX-License-Identifier: MIT
#include "LoadedModule.h"

#include <stdexcept>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace testsystem {

void *loadModule(const std::string &path)
{
    void *module = LoadLibraryA(path.c_str());
    if (!module)
        throw std::runtime_error(path + ": error " + std::to_string(GetLastError()));
    return module;
}

void *findSymbol(void *module, const char *name)
{
    return reinterpret_cast<void *>(GetProcAddress(static_cast<HMODULE>(module), name));
}

void unloadModule(void *module)
{
    FreeLibrary(static_cast<HMODULE>(module));
}

bool isLoaded(const std::string &path)
{
    return GetModuleHandleA(path.c_str()) != nullptr;
}

void *programSymbol(const char *name)
{
    return findSymbol(GetModuleHandleA(nullptr), name);
}

std::string missingFileCode(const std::string & /*path*/)
{
    return std::to_string(ERROR_MOD_NOT_FOUND);
}

std::string directoryCode(const std::string & /*path*/)
{
    return std::to_string(ERROR_MOD_NOT_FOUND);
}

std::string missingSymbolCode(const std::string & /*path*/, const std::string & /*symbol*/)
{
    return std::to_string(ERROR_PROC_NOT_FOUND);
}

} // namespace testsystem
