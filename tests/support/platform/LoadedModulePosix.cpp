// SPDX-License-Identifier: MIT
#include "LoadedModule.h"

#include <dlfcn.h>

#include <stdexcept>

namespace testsystem {

void *loadModule(const std::string &path)
{
    void *module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module)
        throw std::runtime_error(dlerror());
    return module;
}

void *findSymbol(void *module, const char *name)
{
    return dlsym(module, name);
}

void unloadModule(void *module)
{
    dlclose(module);
}

bool isLoaded(const std::string &path)
{
    void *module = dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (module)
        dlclose(module);
    return module != nullptr;
}

void *programSymbol(const char *name)
{
    return dlsym(RTLD_DEFAULT, name);
}

std::string missingFileCode(const std::string &path)
{
    return path + ": cannot open shared object file: No such file or directory";
}

std::string directoryCode(const std::string &path)
{
    return path + ": cannot read file data: Is a directory";
}

std::string missingSymbolCode(const std::string &path, const std::string &symbol)
{
    return path + ": undefined symbol: " + symbol;
}

} // namespace testsystem
