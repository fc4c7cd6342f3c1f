// SPDX-License-Identifier: MIT
// Files that hold passwords, and locks between processes: what the call log and the state file need of the
// operating system. New files can be read and written by their owner only (mode 0600 on POSIX; on Windows the
// folder's rights hold).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// A file that only grows. Several processes may append to it at once.
class AppendFile
{
public:
    /// \throws std::system_error  the file can't be opened or made
    explicit AppendFile(const std::string &path);
    AppendFile(const AppendFile &) = delete;
    AppendFile &operator=(const AppendFile &) = delete;
    ~AppendFile();

    /// Appends \p text as one write, so that lines of several processes never mix. A failure is dropped: the
    /// log must not change what the producer answers.
    void append(std::string_view text) noexcept;

private:
    std::intptr_t file;
};

/// Replaces \p path by a file with this \p content, so that at any moment, a crash included, the old or the
/// new content stands there whole. One writer at a time.
/// \throws std::system_error  the content could not be written; the old one stands
void replaceFile(const std::string &path, std::string_view content);

/// Whether replaceFile() succeeds while others read the file. Windows refuses to replace one that is open.
extern const bool canReplaceWhileRead;

/// The content of a file, or nothing where there is no such file.
/// \throws std::system_error  there is one that can't be read
std::optional<std::string> readFile(const std::string &path);

/// A lock on one number of a lock file, between processes and within one: two objects never hold the same
/// number. The system takes it away when the process ends, however it ends.
class NumberLock
{
public:
    /// Takes the lock without waiting; nothing when another object holds it.
    /// \param number  0 to 2^62
    /// \throws std::system_error  the lock file can't be opened or made
    static std::optional<NumberLock> tryTake(const std::string &path, std::uint64_t number);

    /// True when some object holds the number. The question takes nothing on POSIX; Windows can only try, and
    /// then holds the number for a moment, which tryTake() waits for.
    /// \throws std::system_error  as tryTake()
    static bool isTaken(const std::string &path, std::uint64_t number);

    NumberLock(const NumberLock &) = delete;
    NumberLock &operator=(const NumberLock &) = delete;
    NumberLock(NumberLock &&other) noexcept;
    NumberLock &operator=(NumberLock &&) = delete;
    ~NumberLock();

private:
    explicit NumberLock(std::intptr_t file) : file(file) {}

    std::intptr_t file;
};

} // namespace simulator
