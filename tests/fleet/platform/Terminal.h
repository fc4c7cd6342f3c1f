// SPDX-License-Identifier: MIT
// Ctrl-C, and how far it reaches. Each platform has a source of its own; so has Fleet::onTerminal, beside it.
#pragma once

#include <QProcess>
#include <memory>

class Interrupter
{
public:
    /// To be there before the process.
    Interrupter();

    /// Interrupts \p process as a user or a lost connection does, more than once where it can be.
    void interrupt(QProcess &process) const;

    /// Whether that ends its wait for a pipe too.
    static const bool endsReads;

private:
    std::shared_ptr<void> terminal;
};
