// SPDX-License-Identifier: MIT
#include "FileStamp.h"

#include <sys/stat.h>

#include <cerrno>
#include <system_error>

namespace simulator {

FileStamp fileStamp(const std::string &path)
{
    struct stat file = {};
    if (stat(path.c_str(), &file) != 0)
        throw std::system_error(errno, std::generic_category(), path);
    constexpr std::int64_t nanoseconds = 1'000'000'000;
    return {file.st_mtim.tv_sec * nanoseconds + file.st_mtim.tv_nsec,
            static_cast<std::uint64_t>(file.st_size), file.st_ino};
}

} // namespace simulator
