// SPDX-License-Identifier: MIT
// What the journal knows after runs that ended in all sorts of ways.
#include "Journal.h"

#include "Audit.h"
#include "FullDisk.h"
#include "Records.h"
#include "System.h"

#include <gmock/gmock.h>

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

namespace fleet {

namespace {

using testing::HasSubstr;

class JournalTest : public testing::Test
{
protected:
    JournalTest()
    {
        for (const char *serial : {"A1", "A2", "A3"}) {
            Camera &camera = cameras.emplace_back();
            camera.serial = serial;
            camera.model = "M";
            camera.lock = Lock::Locked;
        }
    }

    /// A run over all, of which the first changed, the second has an intent, and the third was not reached.
    void beginRun(const char *id)
    {
        Journal journal(path);
        journal.beginRun(QLatin1String(id), Action::Change, cameras);
        journal.tellIntent(cameras[0]);
        journal.tellOutcome(cameras[0], {Result::Done, InForce::New, {}, {}});
        journal.tellIntent(cameras[1]);
    }

    QByteArray text() const
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    void write(const QByteArray &bytes) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    /// All that is told till now was told two years ago.
    void age() const
    {
        const int year = QDateTime::currentDateTimeUtc().date().year();
        write(text().replace("\"time\":\"" + QByteArray::number(year),
                             "\"time\":\"" + QByteArray::number(year - 2)));
    }

    const QTemporaryDir folder;
    const QString path = folder.filePath("state/journal.jsonl");
    std::vector<Camera> cameras;
};

TEST_F(JournalTest, TellsWhatAKilledRunHasLeft)
{
    beginRun("r1");
    EXPECT_TRUE(testsystem::isPrivate(path.toStdString()));
    const Journal journal(path);
    ASSERT_EQ(journal.unsettled().intents.size(), 1U);
    EXPECT_EQ(journal.unsettled().intents[0].serial, "A2");
    EXPECT_EQ(journal.unsettled().intents[0].lock, Lock::Locked);
    ASSERT_EQ(journal.unsettled().notReached.size(), 1U);
    EXPECT_EQ(journal.unsettled().notReached[0].serial, "A3");
    EXPECT_FALSE(journal.hasUnsettledIntent(cameras[0]));
    EXPECT_TRUE(journal.hasUnsettledIntent(cameras[1]));
    cameras[1].model = "N";
    EXPECT_FALSE(journal.hasUnsettledIntent(cameras[1])) << "another camera of that serial number";
}

TEST_F(JournalTest, ALaterRunSettlesTheCamerasOfAnEarlierOne)
{
    cameras[1].mac = 0x02;
    beginRun("r1");
    cameras[1].lock = Lock::Unlocked; // as the killed run left it
    beginRun("r2");
    EXPECT_EQ(Journal(path).unsettled().intents.at(0).lock, Lock::Locked) << "as it stood before both";
    EXPECT_EQ(Journal(path).unsettled().notReached.size(), 1U) << "each camera once";
    {
        Journal journal(path);
        journal.beginRun("r3", Action::Change, cameras);
        journal.endRuns(journal.unsettled().runs);
        cameras[1].model = "M, renamed"; // the MAC address tells that it is the same
        for (const Camera &camera : cameras)
            journal.tellOutcome(camera, {Result::Done, InForce::New, {}, {}});
        journal.endRun(Status::Done);
    }
    const Journal journal(path);
    EXPECT_TRUE(journal.unsettled().intents.empty());
    EXPECT_TRUE(journal.unsettled().notReached.empty());
    EXPECT_TRUE(journal.unsettled().runs.empty());
}

TEST_F(JournalTest, PassesOverADamagedLastLineAndNoOther)
{
    beginRun("r1");
    const QByteArray whole = text();
    write(whole + "{\"event\": \"outc");
    {
        Journal journal(path);
        ASSERT_EQ(journal.warnings().size(), 1U);
        EXPECT_THAT(journal.warnings()[0], HasSubstr("damaged"));
        journal.beginRun("r2", Action::Change, cameras);
    }
    EXPECT_TRUE(Journal(path).warnings().empty()) << "the next line was not glued to it";
    EXPECT_EQ(Journal(path).unsettled().intents.size(), 1U);
    write("{\"event\n" + whole);
    EXPECT_THROW(Journal{path}, JournalError);
}

TEST_F(JournalTest, ForgetsSettledRunsAfterAYearAndNoOthers)
{
    beginRun("settled");
    {
        Journal journal(path);
        journal.beginRun("r2", Action::Change, {cameras[1], cameras[2]});
        journal.tellOutcome(cameras[1], {Result::Done, InForce::New, {}, {}});
        journal.tellOutcome(cameras[2], {Result::Done, InForce::New, {}, {}});
        journal.endRun(Status::Done);
    }
    beginRun("left");
    age();
    Journal(path).beginRun("now", Action::Lock, {});
    const QByteArray kept = text();
    EXPECT_FALSE(kept.contains("\"settled\""));
    EXPECT_TRUE(kept.contains("\"left\""));
}

TEST_F(JournalTest, ForgetsNoOutcomeOfACameraOfARunThatStays)
{
    beginRun("r1");
    {
        Journal journal(path);
        journal.beginRun("r2", Action::Change, {cameras[1]});
        journal.tellOutcome(cameras[1], {Result::Done, InForce::New, {}, {}});
        journal.endRun(Status::Done);
    }
    age();
    write(text() + "damaged, so that the journal is written anew");
    Journal(path).beginRun("now", Action::Lock, {});
    EXPECT_FALSE(Journal(path).hasUnsettledIntent(cameras[1]));
    EXPECT_EQ(Journal(path).unsettled().notReached.size(), 1U);
}

TEST_F(JournalTest, NobodyIsToldOfAChangeThatItDoesNotHave)
{
    const QString told = folder.filePath("told");
    Request request;
    request.action = Action::Change;
    request.onChanged = "touch " + told.toStdString();
    Journal journal(path);
    Audit audit({}, Action::Change, "r1");
    const auto report = makeTableReport(Action::Change);
    Records records(request, "r1", journal, audit, *report);
    Jobs jobs(1);
    jobs[0].camera = &cameras[0];
    records.begin(jobs, {});
    records.willWrite(jobs[0]);
    jobs[0].outcome = Outcome{Result::Done, InForce::New, {}, {}};
    if (!limitFiles(text().size()))
        GTEST_SKIP() << "there is no limit for the files of a process here";
    records.finished(jobs[0]);
    ASSERT_TRUE(jobs[0].outcome->reason);
    EXPECT_EQ(jobs[0].outcome->reason->code, ReasonCode::Journal);
    EXPECT_EQ(jobs[0].outcome->inForce, InForce::New);
    EXPECT_FALSE(QFile::exists(told));
}

} // namespace

} // namespace fleet
