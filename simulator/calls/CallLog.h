// SPDX-License-Identifier: MIT
// The file that receives a line for each call: what tests and bug reports read. It holds passwords.
#pragma once

#include "PrivateFile.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <string>

namespace simulator {

/// Thread: any.
class CallLog
{
public:
    /// The log of this module. Calls before the first GCInitLib meet it closed, since the file isn't known
    /// yet.
    static CallLog &instance();

    /// Appends to the file \p path from now on; an empty path closes the log.
    /// \throws std::system_error  the file can't be opened or made; the log is closed then
    void open(const std::string &path);

    bool isOpen() const { return open_; }

    /// Appends one line.
    /// \param line  without its line end
    void write(std::string line) noexcept;

private:
    std::atomic<bool> open_ = false;
    std::mutex mutex; // guards file
    std::unique_ptr<AppendFile> file;
};

} // namespace simulator
