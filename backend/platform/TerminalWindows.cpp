// SPDX-License-Identifier: MIT
// That a reader has left shows at the next write only.
#include "OutputLogWindows.h"
#include "Terminal.h"

#include <io.h>

const std::string_view console::lineEndPrefix = "\r";

bool console::isTerminal(std::FILE *stream)
{
    return _isatty(_fileno(stream)) != 0;
}

bool console::waitForInput()
{
    return true;
}

bool console::writeToLog(std::string_view text)
{
    return OutputLog::instance().write(text);
}
