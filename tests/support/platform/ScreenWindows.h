// SPDX-License-Identifier: MIT
// A console of Windows, with its keyboard and its screen, for this process and a program in it.
#pragma once

#include <string>
#include <string_view>

namespace testsystem {

/// One at a time.
class Screen
{
public:
    /// This process leaves the console that it has, and is not ended by Ctrl-C any more.
    Screen();
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;
    ~Screen();

    /// Starts \p program with \p arguments as its command line has them.
    void start(const std::string &program, const std::string &arguments);
    bool isRunning() const;
    /// Waits for its end. \return its exit status
    int wait() const;

    /// Types \p text, which is UTF-8. A line feed is the Enter key.
    void type(std::string_view text) const;
    /// What stands before the cursor, in UTF-8: each line with all its blanks, and no line ends.
    std::string text() const;
    bool isEchoOn() const;

private:
    void *input;
    void *output;
    void *process = nullptr;
};

} // namespace testsystem
