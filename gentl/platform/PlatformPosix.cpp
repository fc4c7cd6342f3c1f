// SPDX-License-Identifier: MIT
// The operating system's calls of the binding, on POSIX.
#include "Platform.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace GenICam_Interfaces::platform {

namespace {

// What can't be looked at, a link to nowhere say, counts as a file: the loader tells what is wrong with it.
bool isFile(const fs::directory_entry &entry)
{
    std::error_code unknown;
    const fs::file_type type = entry.status(unknown).type();
    return unknown || type == fs::file_type::regular;
}

} // namespace

const char pathJoiner = '/';
const std::string_view listSeparators = ":;";

void *loadModule(const std::string &path)
{
    // Without a slash dlopen would search the loader's own directories, and an empty name is the program
    // itself.
    const bool hasFolder = path.find('/') != std::string::npos;
    return dlopen((hasFolder ? path : "./" + path).c_str(), RTLD_NOW | RTLD_LOCAL);
}

Function findFunction(void *module, const char *name)
{
    return reinterpret_cast<Function>(dlsym(module, name));
}

void releaseModule(void *module)
{
    dlclose(module);
}

std::string lastError()
{
    const char *text = dlerror();
    return text ? text : "no error reported";
}

std::vector<std::string> listFiles(const std::string &directory)
{
    std::vector<std::string> names;
    std::error_code error;
    fs::directory_iterator entry(directory + pathJoiner, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        if (isFile(*entry))
            names.push_back(entry->path().filename().string());
    }
    return names;
}

std::string environmentVariable(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

} // namespace GenICam_Interfaces::platform
