// SPDX-License-Identifier: MIT
// Runs of torvane on a console of their own.
#include "Fleet.h"
#include "ScreenWindows.h"
#include "Terminal.h"

#include <QThread>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

const bool Interrupter::endsReads = false;

// All that share a console get its Ctrl-C.
Interrupter::Interrupter() : terminal(std::make_shared<testsystem::Screen>()) {}

void Interrupter::interrupt(QProcess & /*process*/) const
{
    GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
    GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, 0);
}

Shown Fleet::onTerminal(const QStringList &arguments, const std::vector<Typed> &dialogue) const
{
    testsystem::Screen screen;
    screen.start(TORVANE_FLEET, arguments.join(QLatin1Char(' ')).toStdString() + " --wait 90");
    auto next = dialogue.begin();
    for (std::size_t seen = 0; next != dialogue.end() && screen.isRunning(); QThread::msleep(5)) {
        const std::string text = screen.text();
        if (text.find(next->question, seen) == std::string::npos || (next->isSecret && screen.isEchoOn()))
            continue;
        seen = text.size();
        screen.type(next->answer);
        if (std::string_view(next->answer).ends_with('\x03')) {
            QThread::msleep(100);
            screen.type("\n"); // Wine's Ctrl-C ends no read
        }
        ++next;
    }
    const int status = screen.wait();
    return {status, screen.text(), screen.isEchoOn()};
}
