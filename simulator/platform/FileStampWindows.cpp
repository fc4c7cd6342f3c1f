// SPDX-License-Identifier: MIT
#include "FileStamp.h"

#include <windows.h>

#include <system_error>

namespace simulator {

FileStamp fileStamp(const std::string &path)
{
    WIN32_FILE_ATTRIBUTE_DATA file{};
    if (!GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &file))
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), path);
    const auto joined = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; };
    return {static_cast<std::int64_t>(
                joined(file.ftLastWriteTime.dwHighDateTime, file.ftLastWriteTime.dwLowDateTime)),
            joined(file.nFileSizeHigh, file.nFileSizeLow)};
}

} // namespace simulator
