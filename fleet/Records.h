// SPDX-License-Identifier: MIT
// What a run leaves of each camera, in this order: the line in the journal, the word to the user's command, the line of the
// audit, the report. A run that writes to no camera leaves the report alone.
#pragma once

#include "Audit.h"
#include "Job.h"
#include "Journal.h"
#include "Report.h"
#include "Request.h"

#include <QString>
#include <vector>

namespace fleet {

class Records
{
public:
    // All but the identifier are the caller's, and outlive this object.
    Records(const Request &request, const QString &runId, Journal &journal, Audit &audit, Report &report);

    /// Tells the outcomes that stand already, and begins the run in the journal with the cameras that have none.
    /// \param takenOver  earlier runs whose cameras these are
    /// \throws JournalError
    void begin(Jobs &jobs, const std::vector<QString> &takenOver);
    /// The camera is about to be written. \throws JournalError
    void willWrite(Job &job);
    void finished(Job &job);
    /// Ends the run in the journal; one that was interrupted stays there for another that goes on with it.
    void end(Status status);

private:
    /// \return false where it could not be written, which the outcome tells then
    bool tellJournal(Job &job);
    void tellHook(Job &job);

    const Request &request;
    const QString runId;
    Journal &journal;
    Audit &audit;
    Report &report;
    bool hasBegun = false;
};

} // namespace fleet
