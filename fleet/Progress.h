// SPDX-License-Identifier: MIT
// How far a run is, on one line of standard error, where that is a terminal.
#pragma once

#include <chrono>
#include <string>

namespace fleet {

class Progress
{
public:
    /// \param total  how many cameras there are
    /// \param isQuiet  show nothing
    Progress(std::size_t total, bool isQuiet);
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;
    /// Clears the line.
    ~Progress();

    /// \p done cameras are through, and the one called \p name is in hand. The time left is that of those before it, for each
    /// that is left.
    void show(std::size_t done, const std::string &name);

private:
    const std::size_t total;
    const bool isShown;
    const std::chrono::steady_clock::time_point begin = std::chrono::steady_clock::now();
};

} // namespace fleet
