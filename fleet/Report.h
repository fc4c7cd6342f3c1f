// SPDX-License-Identifier: MIT
// How a run tells what becomes of it. Results go to standard output, all else to standard error.
#pragma once

#include "Job.h"
#include "Status.h"
#include "Tree.h"

#include <QString>
#include <memory>
#include <string>
#include <vector>

namespace fleet {

class Report
{
public:
    Report() = default;
    Report(const Report &) = delete;
    Report &operator=(const Report &) = delete;
    virtual ~Report() = default;

    /// The cameras of a list, in order, and the producers that told of them.
    virtual void list(const std::vector<Camera> &cameras, const std::vector<Producer> &producers) = 0;
    /// A camera has its outcome.
    virtual void finished(const Job &job) = 0;
    /// All have theirs, or none was reached.
    virtual void summary(const Summary &summary) = 0;
};

/// JSON on standard output, an object a line as soon as it is known.
std::unique_ptr<Report> makeJsonReport(Action action, const QString &run);
/// A table for people on standard output, when all is known.
std::unique_ptr<Report> makeTableReport(Action action);

} // namespace fleet
