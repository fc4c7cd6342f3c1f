// SPDX-License-Identifier: MIT
// A program in a process of its own, with the environment and the current folder of the test. Each platform has a source
// of its own.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace testsystem {

class Process
{
public:
    /// \param input, output, errors  files for the standard streams; empty: the test's own
    /// \throws std::runtime_error  it can't be started
    explicit Process(const std::string &program, const std::vector<std::string> &arguments = {},
                     const std::string &input = {}, const std::string &output = {},
                     const std::string &errors = {});
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;
    Process(Process &&other) noexcept : process(std::exchange(other.process, 0)) {}
    Process &operator=(Process &&) = delete;
    /// Ends one that still runs.
    ~Process()
    {
        kill();
        wait();
    }

    /// Waits for its end.
    /// \return the exit status; -1 if it did not end by itself
    int wait();

    /// Ends it at once, wherever it is.
    void kill();

private:
    std::intptr_t process;
};

} // namespace testsystem
