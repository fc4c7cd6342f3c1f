// SPDX-License-Identifier: MIT
// Private files and locks on Windows.
#include "PrivateFile.h"

#include <windows.h>

#include <array>
#include <filesystem>
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
        : value(CreateFileW(std::filesystem::path(path).c_str(), access, sharedByAll, nullptr, disposition,
                            FILE_ATTRIBUTE_NORMAL, nullptr))
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

} // namespace

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
    if (!MoveFileExW(std::filesystem::path(fresh).c_str(), std::filesystem::path(path).c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
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

std::optional<NumberLock> NumberLock::tryTake(const std::string &path, std::uint64_t number)
{
    Handle handle(path, GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS);
    if (!handle.isOpen())
        fail(path);

    OVERLAPPED region{};
    region.Offset = static_cast<DWORD>(number);
    region.OffsetHigh = static_cast<DWORD>(number >> 32);
    if (LockFileEx(handle.get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &region))
        return NumberLock(handle.release());
    if (GetLastError() != ERROR_LOCK_VIOLATION && GetLastError() != ERROR_IO_PENDING)
        fail(path);
    return std::nullopt;
}

bool NumberLock::isTaken(const std::string &path, std::uint64_t number)
{
    return !tryTake(path, number);
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
