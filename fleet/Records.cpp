// SPDX-License-Identifier: MIT
#include "Records.h"

#include "ChangedHook.h"
#include "Output.h"

namespace fleet {

namespace {

/// Whether the outcome says what became of the camera. One that was not reached, and one of an earlier run's intent that
/// could not be asked or whose old password nobody had, are left for another run.
bool isSettled(const Job &job)
{
    const std::optional<Reason> &reason = job.outcome->reason;
    if (reason && reason->code == ReasonCode::NotReached)
        return false;
    if (job.begunAs && reason && reason->code == ReasonCode::Vanished)
        return false; // what answered is another camera
    if (!job.rules.tryNewFirst)
        return true;
    return job.hasIntent && !(reason && reason->code == ReasonCode::NoSecret);
}

} // namespace

Records::Records(const Request &request, const QString &runId, Journal &journal, Audit &audit, Report &report)
    : request(request), runId(runId), journal(journal), audit(audit), report(report)
{
    for (const std::string &warning : journal.warnings())
        complain(warning);
}

void Records::begin(Jobs &jobs, const std::vector<QString> &takenOver)
{
    std::vector<Camera> cameras;
    for (Job &job : jobs) {
        if (!job.outcome) {
            cameras.push_back(*job.camera);
            continue;
        }
        audit.tell(job);
        report.finished(job);
    }
    if (!request.mayWrite() || cameras.empty())
        return;
    journal.beginRun(runId, request.action, cameras);
    journal.endRuns(takenOver);
    hasBegun = true;
}

void Records::willWrite(Job &job)
{
    journal.tellIntent(*job.camera);
    job.hasIntent = true;
}

void Records::finished(Job &job)
{
    if (!isSettled(job) || tellJournal(job))
        tellHook(job);
    audit.tell(job);
    report.finished(job);
}

// Whoever is told of a change may rely on it, so not of one that a crash would unsettle again.
bool Records::tellJournal(Job &job)
{
    try {
        journal.tellOutcome(*job.camera, *job.outcome);
        return true;
    } catch (const JournalError &error) {
        job.outcome->reason = journalReason(error);
        return false;
    }
}

// A change that an earlier run made and did not tell is told too.
void Records::tellHook(Job &job)
{
    if (request.onChanged.empty() || job.outcome->inForce != InForce::New)
        return;
    const std::string failure = runChangedHook(request.onChanged, job, runId);
    if (!failure.empty())
        job.outcome->reason = Reason{ReasonCode::Vault, failure, "Tell the vault of this change by hand."};
}

void Records::end(Status status)
{
    if (!hasBegun || status == Status::Interrupted)
        return;
    try {
        journal.endRun(status);
    } catch (const JournalError &error) {
        complain(error.what());
    }
}

} // namespace fleet
