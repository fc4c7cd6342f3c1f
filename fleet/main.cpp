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

Status start(int argc, char **argv)
{
    platform::watchInterruption();
    const CommandLine line = parseCommandLine(argc, argv);
    if (line.answer) {
        writeResult(*line.answer);
        return Status::Done;
    }
    if (line.isDoctor)
        return runDoctor(line.request);
    const QString runId = newRunId();
    const auto report =
        line.request.json ? makeJsonReport(line.request.action, runId) : makeTableReport(line.request.action);
    return run(line.request, runId, *report);
}

/// What ended the whole, told on standard error, as a status. Only within a catch.
Status tellFailure()
{
    try {
        throw;
    } catch (const CommandLineError &error) {
        complain(error.what());
        complain("Try 'torvane --help'.");
        return Status::Usage;
    } catch (const UsageError &error) {
        complain(error.what());
        return Status::Usage;
    } catch (const JournalError &error) {
        complain(error.what());
        return Status::Usage;
    } catch (const Interrupted &interruption) {
        complain(interruption.what());
        return Status::Interrupted;
    } catch (const NothingChosen &error) {
        complain(error.what());
        return error.status();
    } catch (const std::exception &error) {
        complain(error.what());
        return Status::Unexpected;
    }
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
    } catch (...) {
        status = tellFailure();
        if (asksForSummary(argc, argv))
            makeJsonReport(Action::Verify, {})->summary({.status = status});
    }
    if (hasLostResults()) {
        complain("Not all results could be written to standard output.");
        status = status == Status::Done ? Status::Unexpected : status;
    }
    return static_cast<int>(status);
}
