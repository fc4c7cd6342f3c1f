// SPDX-License-Identifier: MIT
// One run at a time writes to the cameras of a PC.
#pragma once

#include <QLockFile>
#include <QString>
#include <chrono>
#include <memory>
#include <string>

namespace fleet {

/// Holds torvane.lock, in /run/lock where that can be written, else in the folder for temporary files, until its end or that
/// of the process. A lock never counts as left over by its age: a run may take hours.
class RunLock
{
public:
    RunLock();

    /// \param patience  how long to wait for a run that is going on
    /// \return false when it still goes on, or the file can't be made
    /// \throws Interrupted
    bool acquire(std::chrono::seconds patience);

    /// Which process holds it, as a sentence for the user.
    std::string holder() const;

private:
    const QString path;
    std::unique_ptr<QLockFile> file;
};

} // namespace fleet
