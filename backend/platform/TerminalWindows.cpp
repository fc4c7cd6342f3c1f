// SPDX-License-Identifier: MIT
// That a reader has left shows at the next write only.
#include "Terminal.h"

#include <io.h>

bool console::isTerminal(std::FILE *stream)
{
    return _isatty(_fileno(stream)) != 0;
}

bool console::waitForInput()
{
    return true;
}
