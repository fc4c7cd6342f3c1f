// SPDX-License-Identifier: MIT
// The loader of Windows checks by itself whether a file holds all that its headers promise.
#include "ModuleFile.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace GenICam_Interfaces::platform {

std::string moduleFileFault(const std::string &path)
{
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES ||
        (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0)
        return {};
    return path + ": not a regular file";
}

} // namespace GenICam_Interfaces::platform
