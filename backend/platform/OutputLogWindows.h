// SPDX-License-Identifier: MIT
// The file that takes what is printed where there is no console: a window that was started from the menu has none.
#pragma once

#include <fstream>
#include <mutex>
#include <string>
#include <string_view>

namespace console {

/// %LOCALAPPDATA%\torvane\torvane.log, to which several processes may append. It never holds more than 1 MB: what is older
/// is cut. What goes there is what a console would show, without what is typed.
class OutputLog
{
public:
    static OutputLog &instance();

    /// Opens the file, and has std::cout and std::cerr write to it from now on. A failure is ignored: there is nobody to
    /// tell. Thread: the main one, before there is another.
    void open();

    /// \return false if the file is not open: the text is for standard output. Thread: any; two texts never mix
    bool write(std::string_view text);

private:
    void cut();

    std::mutex mutex;
    std::string path;
    std::ofstream file;
};

} // namespace console
