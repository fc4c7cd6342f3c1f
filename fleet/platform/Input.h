// SPDX-License-Identifier: MIT
// A file or standard input that may give nothing for long: a pipe from a vault's client, a terminal. Each platform has a
// source of its own.
#pragma once

#include <cstddef>
#include <string>

namespace fleet::platform {

/// Thread: one.
class Input
{
public:
    /// Opens \p name, "-" is standard input. A named pipe without a writer is not waited for here.
    /// \throws std::system_error
    explicit Input(const std::string &name);
    Input(const Input &) = delete;
    Input &operator=(const Input &) = delete;
    ~Input();

    /// Waits for bytes, \p size at most.
    /// \return how many have come; 0 at the end
    /// \throws std::system_error
    /// \throws Interrupted  a signal has come; on Windows it is seen when the wait is over
    std::size_t read(char *bytes, std::size_t size);

private:
    int descriptor;
};

} // namespace fleet::platform
