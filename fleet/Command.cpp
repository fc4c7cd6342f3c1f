// SPDX-License-Identifier: MIT
#include "Command.h"

#include "Interruption.h"
#include "ShieldedProcess.h"
#include "StartFault.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <memory>

namespace fleet {

namespace {

constexpr int timeLimitMs = 30'000;
constexpr int pollMs = 100;       // after so long an interruption is seen
constexpr int longestLine = 4096; // bytes
constexpr const char *serialMark = "{serial}";

/// Reads what the process prints until it ends, and keeps the beginning: a command that prints for ever costs time only.
void collectOutput(QProcess &process, CommandKind kind, std::string &kept)
{
    const QDeadlineTimer deadline(timeLimitMs);
    kept.reserve(longestLine + 1); // growth would leave copies behind
    for (;;) {
        QByteArray more = process.readAllStandardOutput();
        kept.append(more.constData(),
                    std::min(static_cast<std::size_t>(more.size()), longestLine + 1 - kept.size()));
        more.fill('\0');
        const bool isGivenUp = kind == CommandKind::Question && platform::isInterrupted();
        if (process.state() == QProcess::NotRunning || deadline.hasExpired() || isGivenUp)
            return;
        process.waitForReadyRead(std::min(pollMs, static_cast<int>(deadline.remainingTime())));
    }
}

void cutToFirstLine(std::string &text)
{
    text.resize(std::min(text.find('\n'), text.size()));
    if (text.ends_with('\r'))
        text.pop_back();
}

std::string endOf(QProcess &process)
{
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished();
        return platform::isInterrupted() ? "The run was interrupted."
                                         : "The command did not end within 30 s.";
    }
    if (process.exitStatus() != QProcess::NormalExit)
        return "The command was ended by a signal.";
    if (process.exitCode() != 0)
        return "The command ended with status " + std::to_string(process.exitCode()) + '.';
    return {};
}

} // namespace

bool isFitForCommand(const std::string &serial)
{
    const auto isFit = [](char byte) {
        return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
               byte == '.' || byte == '_' || byte == '-';
    };
    return !serial.empty() && serial.front() != '-' && serial.front() != '.' &&
           std::ranges::all_of(serial, isFit);
}

bool namesSerial(const std::string &command)
{
    return command.find(serialMark) != std::string::npos;
}

std::string commandFault(const std::string &command)
{
    const QStringList words = QProcess::splitCommand(QString::fromStdString(command));
    if (words.isEmpty())
        return "The command is empty.";
    const QString &program = words.front();
    if (program.contains(QLatin1String(serialMark)))
        return {}; // it differs from camera to camera
    // QProcess looks into the search path for a plain name alone.
    const QFileInfo file(program);
    const QString found = file.path() == QLatin1String(".") && !program.startsWith(QLatin1Char('.'))
                              ? QStandardPaths::findExecutable(program)
                              : QStandardPaths::findExecutable(file.fileName(), {file.absolutePath()});
    if (!found.isEmpty())
        return {};
    return "There is no program '" + program.toStdString() + "' that can be run.";
}

CommandResult runCommand(CommandKind kind, const std::string &command, const std::string &serial,
                         const std::string &input)
{
    QStringList words = QProcess::splitCommand(QString::fromStdString(command));
    if (words.isEmpty())
        return {commandFault(command), {}};
    words.replaceInStrings(QLatin1String(serialMark), QString::fromStdString(serial));
    // What has been begun for the camera in hand is finished all the same.
    const std::unique_ptr<QProcess> owned(kind == CommandKind::Question ? new QProcess
                                                                        : new platform::ShieldedProcess);
    QProcess &process = *owned;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setProgram(words.takeFirst());
    process.setArguments(words);
    process.start();
    if (const std::string fault = startFault(process, timeLimitMs); !fault.empty())
        return {"The command can't be started: " + fault + '.', {}};
    process.write(input.data(), static_cast<qint64>(input.size()));
    process.closeWriteChannel();
    CommandResult result;
    collectOutput(process, kind, result.firstLine);
    result.failure = endOf(process);
    cutToFirstLine(result.firstLine);
    return result;
}

} // namespace fleet
