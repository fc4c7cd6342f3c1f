// SPDX-License-Identifier: MIT
// The operating system's calls of the binding, on Windows. Names are in the process's code page: the A forms.
#include "Platform.h"

#include <cstdlib>
#include <memory>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace GenICam_Interfaces::platform {

const char pathJoiner = '\\';
const std::string_view listSeparators = ";";

void *loadModule(const std::string &path)
{
    // Without a folder the loader would search the program's and the system's directories first.
    const bool hasFolder = path.find_first_of("\\/:") != std::string::npos;
    return LoadLibraryA((hasFolder ? path : ".\\" + path).c_str());
}

Function findFunction(void *module, const char *name)
{
    return reinterpret_cast<Function>(GetProcAddress(static_cast<HMODULE>(module), name));
}

void releaseModule(void *module)
{
    FreeLibrary(static_cast<HMODULE>(module));
}

std::string lastError()
{
    return std::to_string(GetLastError());
}

std::vector<std::string> listFiles(const std::string &directory)
{
    std::vector<std::string> names;
    WIN32_FIND_DATAA entry;
    const HANDLE search = FindFirstFileA((directory + "\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return names;
    const std::unique_ptr<void, decltype(&FindClose)> closer(search, &FindClose);
    do {
        if ((entry.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0)
            names.emplace_back(entry.cFileName);
    } while (FindNextFileA(search, &entry));
    return names;
}

std::string environmentVariable(const char *name)
{
    char *value = nullptr;
    std::size_t size = 0;
    if (_dupenv_s(&value, &size, name) != 0 || !value)
        return {};
    const std::unique_ptr<char, decltype(&std::free)> owner(value, &std::free);
    return value;
}

} // namespace GenICam_Interfaces::platform
