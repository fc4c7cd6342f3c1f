// SPDX-License-Identifier: MIT
// A run is a pipeline: choose, look, resolve secrets, refuse, act camera by camera, report.
#include "Run.h"

#include "Act.h"
#include "Audit.h"
#include "Choose.h"
#include "Interrupted.h"
#include "Journal.h"
#include "List.h"
#include "Output.h"
#include "Prepare.h"
#include "Progress.h"
#include "Questions.h"
#include "Records.h"
#include "Resume.h"
#include "RunLock.h"
#include "Secrets.h"
#include "ShownName.h"

namespace fleet {

namespace {

Status end(const Jobs &jobs, const Tree &tree, const Audit &audit, Report &report)
{
    std::vector<Outcome> outcomes;
    for (const Job &job : jobs)
        outcomes.push_back(*job.outcome);
    Summary summary = summarise(outcomes, tree.hasFailure());
    if (summary.status == Status::Done && audit.hasGap())
        summary.status = Status::DoneInPart;
    if (platform::isInterrupted())
        summary.status = Status::Interrupted;
    report.summary(summary);
    return summary.status;
}

Status refuseBeside(const RunLock &other, Report &report)
{
    complain("Another run is going on. " + other.holder());
    report.summary({.status = Status::OtherRun});
    return Status::OtherRun;
}

/// Gives all that have none yet the same outcome, and writes to none of them.
void settleRest(Jobs &jobs, Action action, Result result, const std::optional<Reason> &reason)
{
    for (Job &job : jobs) {
        if (!job.outcome)
            job.outcome = Outcome{result, inForceUntouched(job, action), reason, {}};
    }
}

Reason notReached()
{
    return {ReasonCode::NotReached, "The run was refused because of other cameras.", {}};
}

/// All that is decided before the first camera is written: whoever has an outcome then is not.
void decide(Jobs &jobs, const Request &request, Secrets &secrets, Tree &tree, const Journal &journal)
{
    try {
        const bool mustConfirm = request.action == Action::Reset && !request.yes && !request.dryRun;
        if (prepareJobs(jobs, request, secrets, tree.cameras(), journal) ||
            (mustConfirm && !confirmResets(jobs)))
            settleRest(jobs, request.action, Result::Skipped, notReached());
        else if (request.dryRun)
            settleRest(jobs, request.action, Result::Would, {});
        throwIfInterrupted(); // from here on the camera in hand is finished
    } catch (const Interrupted &interruption) {
        complain(interruption.what());
        settleRest(
            jobs, request.action, Result::Failed,
            Reason{ReasonCode::NotReached, "The run was interrupted before this camera.", "Run it again."});
    }
}

Jobs choose(Tree &tree, const Request &request)
{
    Progress progress(tree.cameras().size(), request.quiet);
    std::size_t looked = 0;
    return chooseJobs(tree, request, [&](const Camera &camera) { progress.show(looked++, nameOf(camera)); });
}

void carryOut(Jobs &jobs, const Request &request, Tree &tree, Secrets &secrets, const Journal &journal,
              Records &records)
{
    Progress progress(jobs.size(), request.quiet);
    std::size_t done = 0;
    actOn(jobs, request, tree,
          {[&](const Job &job) { progress.show(done, nameOf(*job.camera)); },
           [&](Job &job, bool hasTwin) { return prepareOpened(job, hasTwin, request, secrets, journal); },
           [&](Job &job) { records.willWrite(job); },
           [&](Job &job) {
               ++done;
               records.finished(job);
           }});
}

Status act(const Request &request, const QString &runId, Report &report)
{
    Audit audit(request.mayWrite() ? request.audit : std::string(), request.action, runId);
    Secrets secrets(request.secrets, request.needsNew(), askForSecret);
    RunLock lock;
    if (request.mayWrite() && !lock.acquire(request.wait))
        return refuseBeside(lock, report);
    Journal journal(Journal::defaultPath());
    Tree tree(producerFiles(request.libraries));
    tellProducerFailures(tree);
    Records records(request, runId, journal, audit, report);

    Resumption earlier;
    if (request.resume)
        earlier = resumeJobs(tree, journal);
    Jobs jobs = request.resume ? std::move(earlier.jobs) : choose(tree, request);
    decide(jobs, request, secrets, tree, journal);
    records.begin(jobs, earlier.runs);
    carryOut(jobs, request, tree, secrets, journal, records);
    const Status status = end(jobs, tree, audit, report);
    records.end(status);
    return status;
}

} // namespace

Status run(const Request &request, const QString &runId, Report &report)
{
    return request.action == Action::List ? list(request, report) : act(request, runId, report);
}

} // namespace fleet
