// SPDX-License-Identifier: MIT
// torvane: the program for scripts and for those who answer for many cameras.
#include "Check.h"
#include "CheckReport.h"
#include "Choose.h"
#include "Clock.h"
#include "CommandLine.h"
#include "Doctor.h"
#include "Interrupted.h"
#include "Journal.h"
#include "Output.h"
#include "ProcessStart.h"
#include "Report.h"
#include "Run.h"
#include "UsageError.h"

#include <QCoreApplication>
#include <exception>
#include <string_view>

namespace {

using namespace fleet;

Status refuse(Report &report, Status status, const std::string &sentence)
{
    complain(sentence);
    Summary summary;
    summary.status = status;
    report.summary(summary);
    return status;
}

Status runReported(const Request &request)
{
    const QString runId = newRunId();
    const auto report =
        request.json ? makeJsonReport(request.action, runId) : makeTableReport(request.action);
    try {
        return run(request, runId, *report);
    } catch (const UsageError &error) {
        return refuse(*report, Status::Usage, error.what());
    } catch (const JournalError &error) {
        return refuse(*report, Status::Usage, error.what());
    } catch (const Interrupted &interruption) {
        return refuse(*report, Status::Interrupted, interruption.what());
    } catch (const NothingChosen &error) {
        return refuse(*report, Status::NoCamera, error.what());
    }
}

Status start(int argc, char **argv)
{
    const CommandLine line = parseCommandLine(argc, argv);
    if (line.answer) {
        writeResult(*line.answer);
        return Status::Done;
    }
    platform::watchInterruption();
    if (line.isDoctor)
        return runDoctor(line.request.libraries, line.request.json);
    return runReported(line.request);
}

/// Whoever runs a monitoring plugin reads its standard output and its status, also where the call was wrong; help is
/// UNKNOWN, as plugins have it.
CheckState startCheck(int argc, char **argv)
{
    try {
        const CommandLine line = parseCommandLine(argc, argv);
        if (!line.answer) {
            platform::watchInterruption();
            return check(line.request);
        }
        writeResult(*line.answer);
    } catch (const std::exception &error) {
        writeResult(pluginLine(CheckState::Unknown, error.what()));
    }
    return CheckState::Unknown;
}

} // namespace

int main(int argc, char **argv)
{
    prepareProcess();
    const QCoreApplication application(argc, argv);
    if (argc > 1 && std::string_view(argv[1]) == "check")
        return static_cast<int>(startCheck(argc, argv));
    Status status = Status::Unexpected;
    try {
        status = start(argc, argv);
    } catch (const UsageError &error) {
        complain(error.what());
        complain("Try 'torvane --help'.");
        status = Status::Usage;
    } catch (const std::exception &error) {
        complain(error.what());
    }
    return static_cast<int>(status);
}
