// SPDX-License-Identifier: MIT
#include "Interruption.h"
#include "Terminal.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <iostream>

namespace fleet::platform {

namespace {

constexpr std::size_t longestAnswer = 4096; // bytes

/// The terminal shows nothing of what is typed as long as it lives.
class NoEcho
{
public:
    NoEcho()
    {
        isChanged = tcgetattr(STDIN_FILENO, &before) == 0;
        termios silent = before;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        if (isChanged)
            tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    NoEcho(const NoEcho &) = delete;
    NoEcho &operator=(const NoEcho &) = delete;
    ~NoEcho()
    {
        if (isChanged)
            tcsetattr(STDIN_FILENO, TCSAFLUSH, &before);
        std::cerr << '\n' << std::flush;
    }

private:
    termios before = {};
    bool isChanged = false;
};

/// \return false after an interruption
bool awaitInput()
{
    constexpr int pollMs = 100;
    pollfd input{STDIN_FILENO, POLLIN, 0};
    for (;;) {
        if (isInterrupted())
            return false;
        if (poll(&input, 1, pollMs) > 0)
            return true;
    }
}

// Not by way of a stream, which would keep a copy.
std::string readAnswer()
{
    std::string answer;
    answer.reserve(longestAnswer);
    char byte = 0;
    while (awaitInput() && read(STDIN_FILENO, &byte, 1) == 1 && byte != '\n') {
        if (answer.size() < longestAnswer)
            answer += byte;
    }
    if (byte != '\n')
        wipe(answer);
    return answer;
}

} // namespace

int outputWidth()
{
    winsize size = {};
    if (isatty(STDOUT_FILENO) == 0 || ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0)
        return 0;
    return size.ws_col;
}

bool hasErrorTerminal()
{
    return isatty(STDERR_FILENO) != 0;
}

bool canAsk()
{
    return isatty(STDIN_FILENO) != 0 && hasErrorTerminal();
}

std::optional<Secret> askSecret(const std::string &prompt)
{
    std::cerr << prompt << std::flush;
    const NoEcho silence;
    Secret secret(readAnswer());
    if (secret.isEmpty())
        return std::nullopt;
    return secret;
}

std::optional<std::string> askLine(const std::string &prompt)
{
    std::cerr << prompt << std::flush;
    std::string line = readAnswer();
    return line.empty() ? std::nullopt : std::optional(std::move(line));
}

} // namespace fleet::platform
