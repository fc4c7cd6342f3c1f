// SPDX-License-Identifier: MIT
// Who did what to which camera, and what became of it: a JSON line for each chosen camera of a run that may write.
#pragma once

#include "Job.h"
#include "Outcome.h"

#include <QFile>
#include <QString>
#include <string>

namespace fleet {

class Audit
{
public:
    /// Opens \p path for appending, and makes it with mode 0600 where it is missing. An empty one is no audit.
    /// \throws UsageError  it can't be written
    Audit(const std::string &path, Action action, const QString &run);

    /// One append. A failure is told on standard error: the camera has been written already.
    void tell(const Job &job);

private:
    QFile file;
    const Action action;
    const QString run;
};

} // namespace fleet
