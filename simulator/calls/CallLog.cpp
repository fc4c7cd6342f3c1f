// SPDX-License-Identifier: MIT
#include "CallLog.h"

#include <utility>

namespace simulator {

CallLog &CallLog::instance()
{
    static CallLog log;
    return log;
}

void CallLog::open(const std::string &path)
{
    const std::lock_guard guard(mutex);
    open_ = false;
    file.reset();
    if (path.empty())
        return;
    file = std::make_unique<AppendFile>(path);
    open_ = true;
}

void CallLog::write(std::string line) noexcept
try {
    line += '\n';
    const std::lock_guard guard(mutex);
    if (file)
        file->append(line);
} catch (...) {
    // Without memory for the line, the line is missing; the call's answer stands.
}

} // namespace simulator
