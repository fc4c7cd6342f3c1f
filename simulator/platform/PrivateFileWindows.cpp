// SPDX-License-Identifier: MIT
// Private files and locks on Windows. Names are in the code page of the process, as the environment gives them: the A
// forms.
#include "PrivateFile.h"

#include <windows.h>

#include <array>
#include <system_error>
#include <utility>

namespace simulator {

namespace {

constexpr DWORD sharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

[[noreturn]] void fail(const std::string &path)
{
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), path);
}

/// A file handle that closes itself.
class Handle
{
public:
    Handle(const std::string &path, DWORD access, DWORD disposition)
        : value(CreateFileA(path.c_str(), access, sharedByAll, nullptr, disposition, FILE_ATTRIBUTE_NORMAL,
                            nullptr))
    {}
    Handle(const Handle &) = delete;
    Handle &operator=(const Handle &) = delete;
    ~Handle()
    {
        if (isOpen())
            CloseHandle(value);
    }

    bool isOpen() const { return value != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return value; }
    std::intptr_t release()
    {
        return reinterpret_cast<std::intptr_t>(std::exchange(value, INVALID_HANDLE_VALUE));
    }

private:
    HANDLE value;
};

HANDLE handleOf(std::intptr_t file)
{
    return reinterpret_cast<HANDLE>(file);
}

void writeFresh(const std::string &path, std::string_view content)
{
    const Handle file(path, GENERIC_WRITE, CREATE_ALWAYS);
    DWORD written = 0;
    if (!file.isOpen() ||
        !WriteFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &written, nullptr) ||
        !FlushFileBuffers(file.get()))
        fail(path);
}

Handle openForLocks(const std::string &path)
{
    return {path, GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS};
}

/// Locks one byte of the lock file for each number.
/// \return false if another handle has it
bool lock(const Handle &handle, std::uint64_t number, DWORD kind, const std::string &path)
{
    if (!handle.isOpen())
        fail(path);
    OVERLAPPED region{};
    region.Offset = static_cast<DWORD>(number);
    region.OffsetHigh = static_cast<DWORD>(number >> 32);
    if (LockFileEx(handle.get(), kind | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &region))
        return true;
    if (GetLastError() != ERROR_LOCK_VIOLATION && GetLastError() != ERROR_IO_PENDING)
        fail(path);
    return false;
}

} // namespace

const bool canReplaceWhileRead = false;

AppendFile::AppendFile(const std::string &path)
{
    Handle handle(path, FILE_APPEND_DATA, OPEN_ALWAYS);
    if (!handle.isOpen())
        fail(path);
    file = handle.release();
}

AppendFile::~AppendFile()
{
    CloseHandle(handleOf(file));
}

void AppendFile::append(std::string_view text) noexcept
{
    DWORD written = 0;
    WriteFile(handleOf(file), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

void replaceFile(const std::string &path, std::string_view content)
{
    const std::string fresh = path + ".new";
    writeFresh(fresh, content);
    if (!MoveFileExA(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        fail(path);
}

std::optional<std::string> readFile(const std::string &path)
{
    const Handle file(path, GENERIC_READ, OPEN_EXISTING);
    if (!file.isOpen() && GetLastError() == ERROR_FILE_NOT_FOUND)
        return std::nullopt;
    if (!file.isOpen())
        fail(path);

    std::string content;
    std::array<char, 4096> piece{};
    for (;;) {
        DWORD count = 0;
        if (!ReadFile(file.get(), piece.data(), static_cast<DWORD>(piece.size()), &count, nullptr))
            fail(path);
        if (count == 0)
            return content;
        content.append(piece.data(), count);
    }
}

// Several may ask at once whether a number is taken, since the lock of a question is a shared one.
std::optional<NumberLock> NumberLock::tryTake(const std::string &path, std::uint64_t number)
{
    constexpr int tries = 5; // a question of another process is over by then
    Handle handle = openForLocks(path);
    for (int attempt = 0; attempt < tries; ++attempt) {
        if (lock(handle, number, LOCKFILE_EXCLUSIVE_LOCK, path))
            return NumberLock(handle.release());
        Sleep(1);
    }
    return std::nullopt;
}

bool NumberLock::isTaken(const std::string &path, std::uint64_t number)
{
    const Handle handle = openForLocks(path);
    return !lock(handle, number, 0, path);
}

NumberLock::NumberLock(NumberLock &&other) noexcept
    : file(std::exchange(other.file, reinterpret_cast<std::intptr_t>(INVALID_HANDLE_VALUE)))
{}

NumberLock::~NumberLock()
{
    if (handleOf(file) != INVALID_HANDLE_VALUE)
        CloseHandle(handleOf(file));
}

} // namespace simulator
