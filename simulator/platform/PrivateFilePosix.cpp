// SPDX-License-Identifier: MIT
// Private files and locks on POSIX. Locks belong to the open file description, not to the process, so that
// closing another descriptor of the lock file doesn't drop them, and two modules in one process exclude each
// other.
#include "PrivateFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

namespace simulator {

namespace {

constexpr mode_t ownerOnly = 0600;

[[noreturn]] void fail(const std::string &path)
{
    throw std::system_error(errno, std::generic_category(), path);
}

/// A descriptor that closes itself.
class Descriptor
{
public:
    Descriptor(const std::string &path, int flags) : value(open(path.c_str(), flags | O_CLOEXEC, ownerOnly))
    {}
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor()
    {
        if (value >= 0)
            close(value);
    }

    int get() const { return value; }
    int release() { return std::exchange(value, -1); }

private:
    int value;
};

void writeAll(int file, std::string_view content, const std::string &path)
{
    while (!content.empty()) {
        const ssize_t written = write(file, content.data(), content.size());
        if (written < 0 && errno != EINTR)
            fail(path);
        if (written > 0)
            content.remove_prefix(static_cast<std::size_t>(written));
    }
}

/// One byte of the lock file for each number.
struct flock regionOf(std::uint64_t number)
{
    struct flock region = {};
    region.l_type = F_WRLCK;
    region.l_whence = SEEK_SET;
    region.l_start = static_cast<off_t>(number);
    region.l_len = 1;
    return region;
}

} // namespace

const bool canReplaceWhileRead = true;

AppendFile::AppendFile(const std::string &path)
{
    Descriptor descriptor(path, O_WRONLY | O_APPEND | O_CREAT);
    if (descriptor.get() < 0)
        fail(path);
    file = descriptor.release();
}

AppendFile::~AppendFile()
{
    close(static_cast<int>(file));
}

void AppendFile::append(std::string_view text) noexcept
{
    [[maybe_unused]] const ssize_t written = write(static_cast<int>(file), text.data(), text.size());
}

void replaceFile(const std::string &path, std::string_view content)
{
    const std::string fresh = path + ".new";
    const Descriptor descriptor(fresh, O_WRONLY | O_CREAT | O_TRUNC);
    if (descriptor.get() < 0)
        fail(fresh);
    writeAll(descriptor.get(), content, fresh);
    if (fsync(descriptor.get()) != 0 || std::rename(fresh.c_str(), path.c_str()) != 0)
        fail(path);
}

std::optional<std::string> readFile(const std::string &path)
{
    const Descriptor descriptor(path, O_RDONLY);
    if (descriptor.get() < 0 && errno == ENOENT)
        return std::nullopt;
    if (descriptor.get() < 0)
        fail(path);

    std::string content;
    std::array<char, 4096> piece{};
    for (;;) {
        const ssize_t count = read(descriptor.get(), piece.data(), piece.size());
        if (count == 0)
            return content;
        if (count < 0 && errno != EINTR)
            fail(path);
        if (count > 0)
            content.append(piece.data(), static_cast<std::size_t>(count));
    }
}

std::optional<NumberLock> NumberLock::tryTake(const std::string &path, std::uint64_t number)
{
    Descriptor descriptor(path, O_RDWR | O_CREAT);
    if (descriptor.get() < 0)
        fail(path);
    struct flock region = regionOf(number);
    if (fcntl(descriptor.get(), F_OFD_SETLK, &region) == 0)
        return NumberLock(descriptor.release());
    if (errno != EAGAIN && errno != EACCES)
        fail(path);
    return std::nullopt;
}

bool NumberLock::isTaken(const std::string &path, std::uint64_t number)
{
    const Descriptor descriptor(path, O_RDWR | O_CREAT);
    struct flock region = regionOf(number);
    if (descriptor.get() < 0 || fcntl(descriptor.get(), F_OFD_GETLK, &region) != 0)
        fail(path);
    return region.l_type != F_UNLCK;
}

NumberLock::NumberLock(NumberLock &&other) noexcept : file(std::exchange(other.file, -1)) {}

NumberLock::~NumberLock()
{
    if (file >= 0)
        close(static_cast<int>(file));
}

} // namespace simulator
