// SPDX-License-Identifier: MIT
// What is typed into a console of Windows, as UTF-8. The narrow read of a console gives zeros for all that is not ASCII,
// whatever its code page, on systems that are in use.
#pragma once

#include <array>
#include <streambuf>

namespace console {

/// Reads whole lines, with one line feed at their end. A Ctrl+Z at the start of a line is the end of the input. What has
/// been read is wiped before the next read: it may have been a password.
/// Thread: one at a time.
class ConsoleInput : public std::streambuf
{
public:
    /// \param handle  of the console's input; outlives this object
    explicit ConsoleInput(void *handle) : handle(handle) {}

protected:
    int_type underflow() override;

private:
    /// \return how many bytes stand in `bytes`; less than 0 at the end of the input
    int read();

    void *const handle;
    bool isAtLineStart = true;
    wchar_t pendingUnit = 0; // the first half of a character that the last read cut
    std::array<char, 4 * 1024> bytes{};
};

} // namespace console
