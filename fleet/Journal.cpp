// SPDX-License-Identifier: MIT
#include "Journal.h"

#include "CameraKeys.h"
#include "Clock.h"
#include "FileSync.h"
#include "JsonFields.h"
#include "MacAddress.h"
#include "ShownText.h"
#include "StateFolder.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>
#include <algorithm>
#include <initializer_list>
#include <utility>

namespace fleet {

namespace {

const QString eventKey = QStringLiteral("event");
const QString runKey = QStringLiteral("run");
const QString timeKey = QStringLiteral("time");
const QString actionKey = QStringLiteral("action");
const QString camerasKey = QStringLiteral("cameras");
const QString lockKey = QStringLiteral("lock");
const QString statusKey = QStringLiteral("status");

const QString runEvent = QStringLiteral("run");
const QString intentEvent = QStringLiteral("intent");
const QString outcomeEvent = QStringLiteral("outcome");
const QString endEvent = QStringLiteral("end");

[[noreturn]] void fail(const QFile &file, const QString &fault)
{
    throw JournalError("The journal '" + file.fileName().toStdString() + "' " + fault.toStdString() + '.');
}

bool isEvent(const QJsonObject &line, const QString &event)
{
    return line.value(eventKey).toString() == event;
}

QString shown(const std::string &bytes)
{
    return QString::fromStdString(shownText(bytes));
}

/// What is left of one run of changes.
struct RunState
{
    QString id;
    CameraKeys open; ///< chosen, without an outcome
    CameraKeys intents;
    bool hasEnded = false;
};

std::vector<RunState> changeRuns(const std::vector<QJsonObject> &lines)
{
    std::vector<RunState> runs;
    for (const QJsonObject &line : lines) {
        const QString id = line.value(runKey).toString();
        if (isEvent(line, runEvent) &&
            line.value(actionKey).toString() == QLatin1String(wordOf(Action::Change))) {
            RunState &run = runs.emplace_back(RunState{id, {}, {}, false});
            for (const auto &camera : line.value(camerasKey).toArray())
                run.open.add(CameraKey(camera.toObject()));
            continue;
        }
        // Mostly the last one.
        const auto run =
            std::find_if(runs.rbegin(), runs.rend(), [&](const RunState &one) { return one.id == id; });
        if (run == runs.rend())
            continue;
        if (isEvent(line, endEvent)) {
            run->hasEnded = true;
            continue;
        }
        const CameraKey key(line);
        if (isEvent(line, intentEvent)) {
            run->intents.add(key);
        } else if (isEvent(line, outcomeEvent)) {
            // Whatever an earlier run left of this camera is settled with it.
            for (RunState &any : runs) {
                any.open.settle(key);
                any.intents.settle(key);
            }
        }
    }
    return runs;
}

// Of several intents for one camera the oldest tells how its lock stood before any of them.
Unsettled whatIsLeft(const std::vector<RunState> &runs)
{
    Unsettled left;
    CameraKeys known;
    const auto addNew = [&](const CameraKeys &from, std::vector<CameraKey> &to) {
        for (const CameraKey &key : from.left()) {
            if (known.holds(key))
                continue;
            known.add(key);
            to.push_back(key);
        }
    };
    for (const RunState &run : runs)
        addNew(run.intents, left.intents);
    for (const RunState &run : runs) {
        if (!run.hasEnded)
            addNew(run.open, left.notReached);
        if (!run.intents.left().empty() || (!run.hasEnded && !run.open.left().empty()))
            left.runs.push_back(run.id);
    }
    return left;
}

} // namespace

CameraKey::CameraKey(const Camera &camera)
    : serial(shown(camera.serial)),
      mac(camera.mac ? QString::fromStdString(formatMacAddress(*camera.mac)) : QString()),
      model(shown(camera.model)),
      id(shown(camera.place.id))
{}

CameraKey::CameraKey(const QJsonObject &line)
    : serial(line.value(QStringLiteral("serial")).toString()),
      mac(line.value(QStringLiteral("mac")).toString()),
      model(line.value(QStringLiteral("model")).toString()),
      id(line.value(QStringLiteral("id")).toString())
{
    const QString word = line.value(lockKey).toString();
    for (const Lock state : {Lock::Locked, Lock::Unlocked}) {
        if (word == QLatin1String(wordOf(state)))
            lock = state;
    }
}

QJsonObject CameraKey::toJson() const
{
    return {{QStringLiteral("serial"), serial},
            {QStringLiteral("mac"), mac},
            {QStringLiteral("model"), model},
            {QStringLiteral("id"), id}};
}

bool CameraKey::isSame(const CameraKey &other) const
{
    if (!mac.isEmpty() && !other.mac.isEmpty())
        return mac == other.mac;
    if (serial.isEmpty() && other.serial.isEmpty())
        return id == other.id;
    return serial == other.serial && model == other.model;
}

Reason journalReason(const JournalError &error)
{
    return {ReasonCode::Journal, error.what(), "Make room for the journal."};
}

QString Journal::defaultPath()
{
    return platform::stateFolder() + QStringLiteral("/torvane/journal.jsonl");
}

void Journal::makeFolder() const
{
    const QString folder = QFileInfo(file).path();
    if (QFileInfo::exists(folder))
        return;
    if (!QDir().mkpath(folder))
        throw JournalError("The folder of the journal, '" + folder.toStdString() + "', can't be made.");
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

Journal::Journal(const QString &path) : file(path)
{
    if (file.exists())
        read();
}

void Journal::read()
{
    if (!file.open(QIODevice::ReadOnly))
        fail(file, QStringLiteral("can't be read: ") + file.errorString());
    for (int number = 1; !file.atEnd(); ++number) {
        const QByteArray text = file.readLine();
        const QJsonDocument line = QJsonDocument::fromJson(text);
        if (line.isObject() && text.endsWith('\n')) {
            lines.push_back(line.object());
            continue;
        }
        if (!file.atEnd())
            fail(file, QStringLiteral("is damaged in line %1").arg(number));
        warnings_.push_back("The last line of the journal '" + file.fileName().toStdString() +
                            "' is damaged and passed over: a run was ended while it wrote it.");
        mustRewrite = true;
    }
    file.close();
    unsettled_ = whatIsLeft(changeRuns(lines));
    dropOldRuns();
}

// Runs go that have left nothing and are older than a year, up to the first that stays: a later run may have settled one
// camera of a run that stays because of another.
void Journal::dropOldRuns()
{
    const QDateTime oldest = QDateTime::currentDateTimeUtc().addYears(-1);
    const auto stays = [&](const QJsonObject &line) {
        const QDateTime time = QDateTime::fromString(line.value(timeKey).toString(), Qt::ISODateWithMs);
        const bool isOld = time.isValid() && time < oldest;
        return isEvent(line, runEvent) &&
               (!isOld ||
                std::ranges::find(unsettled_.runs, line.value(runKey).toString()) != unsettled_.runs.end());
    };
    const auto kept = std::ranges::find_if(lines, stays);
    mustRewrite = kept != lines.begin() || mustRewrite;
    lines.erase(lines.begin(), kept);
}

bool Journal::hasUnsettledIntent(const Camera &camera) const
{
    const CameraKey key(camera);
    return std::ranges::any_of(unsettled_.intents, [&](const CameraKey &one) { return one.isSame(key); });
}

void Journal::beginRun(const QString &newRun, Action newAction, const std::vector<Camera> &cameras)
{
    run = newRun;
    action = newAction;
    openForWriting();
    QJsonArray keys;
    for (const Camera &camera : cameras)
        keys.append(CameraKey(camera).toJson());
    append({{eventKey, runEvent},
            {QStringLiteral("host"), hostName()},
            {actionKey, QLatin1String(wordOf(action))},
            {camerasKey, keys}});
}

// What was passed over or is too old is left out first: a line that is appended to a damaged one would be lost with it.
void Journal::openForWriting()
{
    makeFolder();
    if (mustRewrite) {
        QSaveFile fresh(file.fileName());
        if (!fresh.open(QIODevice::WriteOnly) || !fresh.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
            fail(file, QStringLiteral("can't be written: ") + fresh.errorString());
        for (const QJsonObject &line : lines)
            fresh.write(jsonLine(line));
        if (!fresh.commit())
            fail(file, QStringLiteral("can't be written: ") + fresh.errorString());
        mustRewrite = false;
    }
    const bool isNew = !file.exists();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        fail(file, QStringLiteral("can't be written: ") + file.errorString());
    if (isNew)
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

void Journal::tellIntent(const Camera &camera)
{
    QJsonObject line = CameraKey(camera).toJson();
    line[eventKey] = intentEvent;
    line[lockKey] = QLatin1String(wordOf(camera.lock));
    append(line);
}

void Journal::tellOutcome(const Camera &camera, const Outcome &outcome)
{
    QJsonObject line = CameraKey(camera).toJson();
    line[eventKey] = outcomeEvent;
    line[QStringLiteral("result")] = QLatin1String(wordOf(outcome.result));
    line[QStringLiteral("in_force")] =
        outcome.inForce ? QJsonValue(QLatin1String(wordOf(*outcome.inForce))) : QJsonValue();
    line[QStringLiteral("reason")] =
        outcome.reason ? QJsonValue(QLatin1String(wordOf(outcome.reason->code))) : QJsonValue();
    append(line);
}

void Journal::endRun(Status status)
{
    append({{eventKey, endEvent}, {statusKey, static_cast<int>(status)}});
}

void Journal::endRuns(const std::vector<QString> &runs)
{
    const QString present = std::exchange(run, QString());
    for (const QString &other : runs)
        append({{eventKey, endEvent}, {runKey, other}, {QStringLiteral("taken_over_by"), present}});
    run = present;
}

void Journal::append(QJsonObject line)
{
    if (!run.isEmpty())
        line[runKey] = run;
    line[timeKey] = utcNow();
    const qint64 end = file.size();
    if (const QByteArray text = jsonLine(line);
        file.write(text) != text.size() || !platform::syncFile(file.handle())) {
        const QString fault = file.errorString();
        file.resize(end); // the next line would be lost with what has got there of this one
        fail(file, QStringLiteral("can't be written: ") + fault);
    }
}

} // namespace fleet
