// SPDX-License-Identifier: MIT
// The operating system's calls of the binding, on Windows. Names are in the process's code page: the A forms.
#include "Platform.h"

#include <cstdlib>
#include <memory>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace GenICam_Interfaces::platform {

namespace {

/// \p path from the drive on; as it is where the system can't tell.
std::string fullPath(const std::string &path)
{
    const std::string given = path.empty() ? "." : path;
    std::string full(GetFullPathNameA(given.c_str(), 0, nullptr, nullptr), '\0'); // with the terminator
    full.resize(GetFullPathNameA(given.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full.empty() ? given : full;
}

} // namespace

const char pathJoiner = '\\';
const std::string_view listSeparators = ";";

// With a full path the loader searches nowhere else, and searches the file's folder for what it depends on.
void *loadModule(const std::string &path)
{
    return LoadLibraryExA(fullPath(path).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
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
    const char *value = std::getenv(name);
    return value ? value : "";
}

} // namespace GenICam_Interfaces::platform
