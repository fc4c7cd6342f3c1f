// SPDX-License-Identifier: MIT
// Runs of torvane on a terminal of their own.
#include "Fleet.h"
#include "Terminal.h"

#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <QThread>
#include <array>
#include <csignal>
#include <cstring>

const bool Interrupter::endsReads = true;

Interrupter::Interrupter() = default;

void Interrupter::interrupt(QProcess &process) const
{
    ::kill(static_cast<pid_t>(process.processId()), SIGHUP);
    process.terminate();
}

Shown Fleet::onTerminal(const QStringList &arguments, const std::vector<Typed> &dialogue) const
{
    std::vector<std::string> words{TORVANE_FLEET};
    for (const QString &argument : arguments + QStringList{QStringLiteral("--wait"), QStringLiteral("90")})
        words.push_back(argument.toStdString());
    std::vector<char *> pointers;
    for (std::string &word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        execv(pointers[0], pointers.data());
        _exit(127);
    }
    Shown shown;
    auto next = dialogue.begin();
    std::size_t seen = 0;
    std::array<char, 4096> bytes{};
    for (ssize_t count = 0; (count = read(terminal, bytes.data(), bytes.size())) > 0;) {
        shown.text.append(bytes.data(), static_cast<std::size_t>(count));
        const std::size_t question =
            next == dialogue.end() ? std::string::npos : shown.text.find(next->question, seen);
        if (question == std::string::npos)
            continue;
        // Echo goes off behind the question, and what is typed before that is dropped.
        termios state = {};
        while (next->isSecret && tcgetattr(terminal, &state) == 0 && (state.c_lflag & ECHO) != 0)
            QThread::msleep(5);
        seen = shown.text.size();
        if (write(terminal, next->answer, std::strlen(next->answer)) < 0)
            break;
        ++next;
    }
    termios state = {};
    shown.isEchoOn = tcgetattr(terminal, &state) == 0 && (state.c_lflag & ECHO) != 0;
    close(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    shown.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return shown;
}
