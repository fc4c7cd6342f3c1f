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

    /// One append. Where it fails the camera has been written already: the line goes to standard error instead.
    void tell(const Job &job);
    /// Whether a line is missing in the file.
    bool hasGap() const { return hasGap_; }

private:
    QFile file;
    const Action action;
    const QString run;
    bool hasGap_ = false;
};

} // namespace fleet
