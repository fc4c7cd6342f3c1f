// SPDX-License-Identifier: MIT
#include "Script.h"

#include <dlfcn.h>

Script *torvaneTestScript()
{
    static Script script;
    return &script;
}

std::string scriptedProducer()
{
    return SCRIPTED_PRODUCER;
}

bool isLoaded(const std::string &path)
{
    void *module = dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (module)
        dlclose(module);
    return module != nullptr;
}
