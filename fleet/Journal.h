// SPDX-License-Identifier: MIT
// What outlives a run that is killed: which cameras it was about, and of each, before it is written, that it is going to
// be, and after the proof what became of it. A JSON line each, synced before the run goes on. It never holds a secret:
// what a kill leaves is settled by trying the new one, then the old one.
//
//     {"event": "run", "run": ..., "time": ..., "host": ..., "action": ..., "cameras": [{"serial", "mac", "model", "id"}]}
//     {"event": "intent", "run": ..., "time": ..., "serial", "mac", "model", "id", "lock": as it stands}
//     {"event": "outcome", ..., "result": ..., "in_force": ..., "reason": code}
//     {"event": "end", "run": ..., "time": ..., "status": ...}
#pragma once

#include "Camera.h"
#include "Outcome.h"
#include "Status.h"

#include <QFile>
#include <QJsonObject>
#include <QString>
#include <stdexcept>
#include <string>
#include <vector>

namespace fleet {

/// The journal cannot be read or written; the text is a sentence that names it. Nothing is written to a camera then.
class JournalError : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// \p error as what became of a camera.
Reason journalReason(const JournalError &error);

/// Of which camera a line tells. Texts as they are shown.
struct CameraKey
{
    QString serial;
    QString mac; ///< empty where not known
    QString model;
    QString id;
    Lock lock = Lock::Unknown; ///< as it stood before the camera was written; of an intent

    explicit CameraKey(const Camera &camera);
    explicit CameraKey(const QJsonObject &line);
    QJsonObject toJson() const;
    /// By the MAC addresses where both are known, else by serial number and model, without a serial number by the id.
    bool isSame(const CameraKey &other) const;
};

/// What earlier runs left of changes.
struct Unsettled
{
    std::vector<CameraKey> intents;    ///< without an outcome: on the new password or the old one
    std::vector<CameraKey> notReached; ///< of runs that did not end
    std::vector<QString> runs;         ///< whose cameras these are
};

/// Thread: one. One process writes at a time, which RunLock sees to.
class Journal
{
public:
    /// "journal.jsonl" in the user's folder for state.
    static QString defaultPath();

    /// Reads the journal, and leaves out settled runs older than a year, up to the first that stays.
    /// \throws JournalError  it cannot be read, or a line but the last one is damaged
    explicit Journal(const QString &path);

    /// What was passed over, as sentences for the user.
    const std::vector<std::string> &warnings() const { return warnings_; }
    /// As it was read: what this run does is not in it.
    const Unsettled &unsettled() const { return unsettled_; }
    bool hasUnsettledIntent(const Camera &camera) const;

    // Each is on the disk when it returns, and throws JournalError where it could not be written. The first makes the folder
    // with mode 0700, and the file with 0600, where they are missing.
    void beginRun(const QString &run, Action action, const std::vector<Camera> &cameras);
    void tellIntent(const Camera &camera);
    void tellOutcome(const Camera &camera, const Outcome &outcome);
    void endRun(Status status);
    /// Ends runs whose cameras a later one has taken over.
    void endRuns(const std::vector<QString> &runs);

private:
    void read();
    void dropOldRuns();
    void makeFolder() const;
    void openForWriting();
    void append(QJsonObject line);

    QFile file;
    QString run;
    Action action = Action::Change;
    std::vector<QJsonObject> lines; // as they were read
    bool mustRewrite = false;       // a damaged line or old runs are to go
    Unsettled unsettled_;
    std::vector<std::string> warnings_;
};

} // namespace fleet
