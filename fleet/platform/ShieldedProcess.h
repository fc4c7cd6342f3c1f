// SPDX-License-Identifier: MIT
// A child that lives on when the run is interrupted. Each platform has a source of its own.
#pragma once

#include <QProcess>

namespace fleet::platform {

/// Ctrl-C, or the terminal's end, reaches all its programs: this one is not ended by it.
class ShieldedProcess : public QProcess
{
public:
    ShieldedProcess();

protected:
    void setupChildProcess() override;
};

} // namespace fleet::platform
