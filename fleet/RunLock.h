// SPDX-License-Identifier: MIT
// One run at a time writes to the cameras of a PC.
#pragma once

#include <QLockFile>
#include <QString>
#include <chrono>
#include <string>

namespace fleet {

/// Holds torvane.lock, in the folder that all users' programs have for locks where that can be written, else in the one for
/// temporary files, until its end or that of the process. A run that holds the other of the two counts too: not all users
/// may write in the first. A lock never counts as left over by its age: a run may take hours.
class RunLock
{
public:
    RunLock();
    /// \param systemFolder  where all users' programs keep locks
    explicit RunLock(const QString &systemFolder);

    /// \param patience  how long to wait for a run that is going on
    /// \return false when it still goes on
    /// \throws Interrupted
    /// \throws std::runtime_error  the file can't be used, with a sentence; that is not known to be because of a run
    bool acquire(std::chrono::seconds patience);

    /// Which process kept acquire waiting, as a sentence for the user.
    std::string holder() const;

private:
    /// \return whether the lock has been taken. \throws std::runtime_error
    bool tryLock();
    void judgeOther();

    const QString path;
    const QString elsewhere; ///< where a run may hold it that may write elsewhere; may be the same
    QLockFile file;
    QString heldPath; ///< of a lock that another run was seen to hold
};

} // namespace fleet
