// SPDX-License-Identifier: MIT
// torvane change over simulated cameras: in all its ways, and killed or interrupted on the way.
#include "Fleet.h"
#include "Shell.h"
#include "Terminal.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QFile>
#include <QThread>
#include <algorithm>
#include <filesystem>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const QString all = "--all";
const QString change = "change";
const QString passwords = "--passwords";

/// A line of a passwords file for each of \p serials.
std::string lines(std::initializer_list<const char *> serials, const std::string &current = "hunter22")
{
    std::string text;
    for (const std::string serial : serials)
        text += R"({"serial": ")" + serial + R"(", "current": ")" + current + R"(", "new": "new-)" + serial +
                "\"}\n";
    return text;
}

void waitForJournal(const Fleet &fleet, const char *text)
{
    QElapsedTimer timer;
    for (timer.start(); timer.elapsed() < 90'000; QThread::msleep(10)) {
        if (fleet.journal().find(text) != std::string::npos)
            return;
    }
    FAIL() << "the journal never had " << text;
}

TEST(ChangeRun, ChangesWhatCanBeChangedAndTellsWhatIsInForce)
{
    Fleet fleet(cameras(camera("A1") + camera("A2", "lock = \"default\"") +
                        camera("A3", "password = \"new-A3\"") + camera("A4", "password = \"lost\"") +
                        camera("A5", "access = \"busy\"") + camera("A6", "lock = \"none\"")));
    const QString file =
        fleet.file("p", lines({"A1", "A3", "A4", "A5"}) + R"({"serial": "A2", "new": "new-A2"})");
    const QString audit = fleet.file("audit", "");
    const Ended run = fleet.act({change, all, passwords, "-", "--audit", audit},
                                lines({"A1", "A3", "A4", "A5"}) + R"({"serial": "A2", "new": "new-A2"})");
    EXPECT_THAT(run.outcomes(),
                ElementsAre("A1 done new", "A2 done new", "A3 unchanged new",
                            "A4 failed wrong_password unknown", "A5 failed held old", "A6 skipped no_lock"));
    EXPECT_EQ(run.status, 3);
    for (const char *id : {"A1", "A2", "A3", "A4"}) {
        EXPECT_EQ(fleet.opens(id, "2"), 1) << id;
        EXPECT_EQ(fleet.opens(id, "3"), 1) << id;
    }
    QFile log(audit);
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    const std::string audited = log.readAll().toStdString();
    EXPECT_EQ(std::ranges::count(audited, '\n'), 6);
    for (const std::string &text : {run.output, run.errors, fleet.journal(), audited}) {
        EXPECT_THAT(text, Not(HasSubstr("hunter22")));
        EXPECT_THAT(text, Not(HasSubstr("new-A")));
    }
    fleet.simulator.clearLog();
    EXPECT_EQ(fleet.states()[0], "A1 locked user");
    EXPECT_EQ(fleet.states()[1], "A2 locked user");
    EXPECT_THAT(fleet.act({change, "--serial", "A1", passwords, file}).outcomes(),
                ElementsAre("A1 unchanged new"));
}

TEST(ChangeRun, TheFactorysPasswordIsSentToNoOtherCamera)
{
    const Fleet fleet(cameras(camera("A1") + camera("A2", "lock = \"default\"")));
    const QString file = fleet.file(
        "p", "{\"serial\": \"A1\", \"new\": \"new-A1\"}\n{\"serial\": \"A2\", \"new\": \"new-A2\"}");
    EXPECT_THAT(fleet.act({change, all, passwords, file}).outcomes(),
                ElementsAre("A1 refused no_secret old", "A2 skipped not_reached old"));
    EXPECT_TRUE(fleet.simulator.calls("GCWritePort").empty());
    EXPECT_THAT(fleet.act({change, "--factory", passwords, file}).outcomes(), ElementsAre("A2 done new"));
}

TEST(ChangeRun, ACameraThatLeftTheFactorysPasswordIsNotSentIt)
{
    Fleet fleet(cameras(camera("A1", "lock = \"default\"")));
    const QString file = fleet.file("p", R"({"serial": "A1", "new": "elsewhere"})");
    EXPECT_THAT(fleet.act({change, all, passwords, file}).outcomes(), ElementsAre("A1 done new"));
    const std::string state = fleet.simulator.statePath().string();
    std::filesystem::rename(state, state + ".later");
    fleet.simulator.clearLog();
    // Somebody else changes it behind the look.
    const QString command = byShell("cp %1.later %1; echo new-A1", "copy /y %1.later %1 >nul & echo new-A1")
                                .arg(QString::fromStdString(state));
    EXPECT_THAT(fleet.act({change, all, "--new-password-command", command}).outcomes(),
                ElementsAre("A1 failed no_secret old"));
    EXPECT_TRUE(fleet.simulator.calls("GCWritePort").empty());
}

TEST(ChangeRun, RefusalsAreToldTogetherBeforeAnythingIsWritten)
{
    const Fleet fleet(cameras(camera("A1") + camera("A2", "lock = \"unlocked\"") + camera("A3") +
                              camera("A4") + camera("A5")));
    const Ended run = fleet.act({change, all, passwords, "-"},
                                "{\"serial\": \"A1\", \"current\": \"hunter22\", \"new\": \"hunter22\"}\n"
                                "{\"serial\": \"A3\", \"current\": \"hunter22\", \"new\": \"same\"}\n"
                                "{\"serial\": \"A4\", \"current\": \"hunter22\", \"new\": \"same\"}\n" +
                                    lines({"A2", "A5"}));
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.summary("refused"), 4);
    EXPECT_EQ(run.summary("selected"), 5);
    EXPECT_THAT(run.outcomes(),
                ElementsAre("A1 refused rule old", "A2 refused unlocked old", "A3 refused rule old",
                            "A4 refused rule old", "A5 skipped not_reached old"));
    EXPECT_TRUE(fleet.simulator.calls("GCWritePort").empty());
}

TEST(ChangeRun, AWriteThatDoesNotArriveLeavesTheOldOneProved)
{
    Fleet fleet(cameras(camera("A1")));
    fleet.simulator.failNth("GCWritePort", -1011, 1, 0, "address = 0x50002000\n");
    const Ended run = fleet.act({change, all, passwords, "-"}, lines({"A1"}));
    EXPECT_THAT(run.outcomes(), ElementsAre("A1 failed write_failed old"));
    EXPECT_EQ(fleet.states()[0], "A1 locked user");
}

TEST(ChangeRun, RelockChangesAnUnlockedCameraAndLeavesItUnlocked)
{
    const Fleet fleet(cameras(camera("A1", "lock = \"unlocked\"")));
    EXPECT_THAT(fleet.act({change, all, "--relock", passwords, "-"}, lines({"A1"})).outcomes(),
                ElementsAre("A1 done new"));
    EXPECT_EQ(fleet.states()[0], "A1 unlocked user");
}

TEST(ChangeRun, CommandsGiveTheSecretsAndLearnOfTheChange)
{
    const Fleet fleet(cameras(camera("A1") + camera("A2")));
    const QString told = fleet.file("told", "");
    const QString hook =
        byShell("cat >> %1; test {serial} = A1", "more >> %1 & if not {serial}==A1 exit 1").arg(told);
    const Ended run = fleet.act({change, all, "--password-command", echo("hunter22"),
                                 "--new-password-command", echo("new-{serial}"), "--on-changed", hook});
    EXPECT_THAT(run.outcomes(), ElementsAre("A1 done new", "A2 done vault new"));
    EXPECT_EQ(run.status, 3);
    QFile file(told);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const std::string text = file.readAll().toStdString();
    EXPECT_THAT(text, HasSubstr(R"("in_force":"new")"));
    EXPECT_THAT(text, HasSubstr(R"("serial":"A2")"));
    EXPECT_THAT(text, Not(HasSubstr("new-A")));
}

TEST(ChangeRun, AKilledRunIsSettledByResume)
{
    // Whatever the instant, the second camera is between its intent and its outcome, or just behind. Once it is on its new
    // password, nobody has an old one that is not the factory's.
    const std::string floor = cameras(camera("A1") + camera("A2", "lock = \"default\"") + camera("A3"));
    for (const int delayMs : {0, 300, 700}) {
        Fleet fleet("[producer]\nlatency_ms = 60\n" + floor);
        const QString file = fleet.file("p", lines({"A1", "A3"}) + R"({"serial": "A2", "new": "new-A2"})");
        QProcess killed;
        fleet.start(killed, {change, all, "--wait", "90", passwords, file});
        waitForJournal(fleet, R"("event":"outcome")");
        QThread::msleep(static_cast<unsigned long>(delayMs));
        killed.kill();
        killed.waitForFinished();
        fleet.simulator.configure(floor);

        const Ended resumed = fleet.act({change, "--resume", passwords, file});
        EXPECT_EQ(resumed.status, 0) << resumed.output << resumed.errors;
        for (const std::string &one : resumed.outcomes())
            EXPECT_THAT(one, HasSubstr(" new"));
        EXPECT_THAT(fleet.states(), ElementsAre("A1 locked user", "A2 locked user", "A3 locked user"));
        const Ended proof = fleet.act({change, all, passwords, fleet.file("all", lines({"A1", "A2", "A3"}))});
        EXPECT_THAT(proof.outcomes(),
                    ElementsAre("A1 unchanged new", "A2 unchanged new", "A3 unchanged new"));
    }
}

TEST(ChangeRun, AnUnsettledIntentRefusesAPlainChange)
{
    Fleet fleet("[producer]\nlatency_ms = 60\n" + cameras(camera("A1", "password = \"lost\"")));
    const QString file = fleet.file("p", lines({"A1"}));
    QProcess killed;
    fleet.start(killed, {change, all, "--wait", "90", passwords, file});
    waitForJournal(fleet, R"("event":"intent")");
    killed.kill();
    killed.waitForFinished();
    // Nobody has its old password, and the new one was not set: what became of it is still not known.
    const QString noOld = fleet.file("n", R"({"serial": "A1", "new": "new-A1"})");
    EXPECT_THAT(fleet.act({change, "--resume", passwords, noOld}).outcomes(),
                ElementsAre("A1 failed no_secret unknown"));
    const Ended plain = fleet.act({change, all, passwords, file});
    EXPECT_EQ(plain.status, 2);
    EXPECT_THAT(plain.output, HasSubstr("Run change --resume first."));
    fleet.simulator.configure(cameras(camera("B1")));
    const Ended gone = fleet.act({change, "--resume", passwords, file});
    EXPECT_THAT(gone.outcomes(), ElementsAre("A1 failed vanished unknown"));
    EXPECT_TRUE(gone.lines()[0]["producer"].isNull());
    EXPECT_TRUE(gone.lines()[0]["mac"].isString());
}

TEST(ChangeRun, ATerminatedRunFinishesTheCameraInHandAndNoOther)
{
    const Fleet fleet("[producer]\nlatency_ms = 60\n" + cameras(camera("A1") + camera("A2") + camera("A3")));
    const QString file = fleet.file("p", lines({"A1", "A2", "A3"}));
    const Interrupter interrupter;
    QProcess process;
    fleet.start(process, {change, all, "--json", "--wait", "90", passwords, file});
    waitForJournal(fleet, R"("event":"intent")");
    interrupter.interrupt(process);
    ASSERT_TRUE(process.waitForFinished(90'000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    const Ended run{process.exitCode(), process.readAllStandardOutput().toStdString(), {}};
    EXPECT_EQ(run.status, 130);
    EXPECT_THAT(run.outcomes(),
                ElementsAre("A1 done new", "A2 failed not_reached old", "A3 failed not_reached old"));
    EXPECT_THAT(fleet.states(), ElementsAre("A1 locked user", "A2 locked user", "A3 locked user"));
    EXPECT_THAT(fleet.act({change, "--resume", passwords, file}).outcomes(),
                ElementsAre("A2 done new", "A3 done new"));
}

// Its first open, that of the look, is refused.
std::string heldAtLook(const char *serial)
{
    return "[[failure]]\nfunction = \"IFOpenDevice\"\ncode = -1005\nid = \"" + std::string(serial) + "\"\n";
}

TEST(ChangeRun, AHeldCameraIsJudgedOnceMoreWhenItIsFree)
{
    Fleet fleet("[producer]\nlatency_ms = 60\n" + cameras(camera("A1", "id = \"old\"")));
    const QString file = fleet.file("p", lines({"A1", "B1"}));
    QProcess killed;
    fleet.start(killed, {change, all, "--wait", "90", passwords, file});
    waitForJournal(fleet, R"("event":"intent")");
    killed.kill();
    killed.waitForFinished();
    fleet.simulator.clearLog();
    // Another camera in the place of the one that was begun.
    fleet.simulator.configure(heldAtLook("A1") + cameras(camera("A1", "", "02:00:00:00:00:99")));
    EXPECT_THAT(fleet.act({change, "--resume", passwords, file}).outcomes(),
                ElementsAre("A1 failed vanished unknown"));
    // The one that was begun, by another serial number: its MAC address alone tells.
    const std::string mac = fleet.journal().substr(fleet.journal().find("02:00:"), 17);
    fleet.simulator.configure(heldAtLook("B1") + cameras(camera("B1", "", mac)));
    EXPECT_THAT(fleet.act({change, all, passwords, file}).outcomes(), ElementsAre("B1 failed journal old"));
    EXPECT_TRUE(fleet.simulator.calls("GCWritePort").empty());
    // One on the factory's password gets that, whatever there is for all.
    fleet.simulator.configure(heldAtLook("C1") + cameras(camera("C1", "lock = \"default\"")));
    EXPECT_THAT(fleet
                    .act({change, all, "--password-file", fleet.file("o", "hunter22"), "--new-password-file",
                          fleet.file("n", "new-C1")})
                    .outcomes(),
                ElementsAre("C1 done new"));
}

} // namespace
