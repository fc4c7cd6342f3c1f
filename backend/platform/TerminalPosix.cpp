// SPDX-License-Identifier: MIT
#include "Terminal.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>

namespace {

// Such a terminal hands out one line at a time, so that no buffer of ours holds a further one that poll doesn't know.
bool isReadByLine(int descriptor)
{
    termios settings{};
    return tcgetattr(descriptor, &settings) == 0 && (settings.c_lflag & ICANON) != 0;
}

} // namespace

const std::string_view console::lineEndPrefix;

bool console::isTerminal(std::FILE *stream)
{
    return isatty(fileno(stream)) == 1;
}

bool console::waitForInput()
{
    if (!isReadByLine(STDIN_FILENO))
        return true;
    // Of output only errors are of interest, which count without being asked for.
    pollfd streams[] = {{STDIN_FILENO, POLLIN, 0}, {STDOUT_FILENO, 0, 0}};
    while (poll(streams, 2, -1) < 0) {
        if (errno != EINTR)
            return true;
    }
    return streams[1].revents == 0;
}

bool console::writeToLog(std::string_view /*text*/)
{
    return false;
}
