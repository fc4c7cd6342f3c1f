// SPDX-License-Identifier: MIT
// What torvane asks on a terminal, and how it ends when it is interrupted before anything is written.
#include "Fleet.h"
#include "Shell.h"
#include "Terminal.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QThread>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const char *const current = "Password of A1 (SimCam): ";
const char *const next = "New password of A1 (SimCam): ";
const char *const again = "The same again: ";
const char *const confirm = "Type A1 to go on: ";

QStringList onA1(const char *command)
{
    return {QString::fromLatin1(command), "--serial", "A1"};
}

TEST(TerminalRun, AsksForSecretsWithoutEchoAndForANewOneTwice)
{
    const Fleet fleet(cameras(camera("A1")));
    const Shown change = fleet.onTerminal(onA1("change"), {{current, "hunter22\n"},
                                                           {next, "first one\n"},
                                                           {again, "another\n"},
                                                           {next, "n\u00fc-A1\n"},
                                                           {again, "n\u00fc-A1\n"}});
    EXPECT_EQ(change.status, 0) << change.text;
    EXPECT_THAT(change.text, HasSubstr("They differ."));
    EXPECT_EQ(fleet.onTerminal(onA1("verify"), {{current, "n\u00fc-A1\n"}}).status, 0);
    EXPECT_THAT(fleet.simulator.portTraffic(), Contains("write 0x50002000 6e c3 bc 2d 41 31 00 00"));
    for (const char *secret : {"hunter22", "first one", "another", "n\u00fc-A1"})
        EXPECT_THAT(change.text, Not(HasSubstr(secret)));
    EXPECT_TRUE(change.isEchoOn);
}

TEST(TerminalRun, AResetIsConfirmedByTheSerialNumber)
{
    const Fleet fleet(cameras(camera("A1", "reboot_ms = 300")));
    EXPECT_EQ(fleet.onTerminal(onA1("reset"), {{confirm, "A2\n", false}}).status, 2);
    EXPECT_THAT(fleet.states(), ElementsAre("A1 locked user"));
    EXPECT_EQ(fleet.onTerminal(onA1("reset"), {{confirm, "A1\n", false}}).status, 0);
    EXPECT_THAT(fleet.states(), ElementsAre("A1 locked factory"));
}

TEST(TerminalRun, AnInterruptedQuestionEndsTheRunWithEchoOn)
{
    struct Row
    {
        const char *command;
        std::vector<Typed> dialogue;
    };
    for (const Row &row : {Row{"verify", {{current, "\x03"}}},
                           {"change", {{current, "hunter22\n"}, {next, "new\x03"}}},
                           {"change", {{current, "hunter22\n"}, {next, "new-A1\n"}, {again, "\x03"}}},
                           {"reset", {{confirm, "\x03", false}}}}) {
        const Fleet fleet(cameras(camera("A1")));
        const Shown shown = fleet.onTerminal(onA1(row.command), row.dialogue);
        EXPECT_EQ(shown.status, 130) << row.command << shown.text;
        EXPECT_TRUE(shown.isEchoOn) << row.command;
        EXPECT_THAT(shown.text, HasSubstr("interrupted before anything was written")) << row.command;
        EXPECT_TRUE(fleet.simulator.calls("GCWritePort").empty()) << row.command;
        EXPECT_EQ(fleet.journal(), "") << row.command;
    }
}

TEST(TerminalRun, ASignalIsHeededWhileNothingComes)
{
    const Fleet fleet(cameras(camera("A1")));
    const QString begun = QString::fromStdString((fleet.simulator.folder() / "begun").string());
    const QString command =
        "--password-command=" +
        byShell("echo > %1; sleep 30", "echo > %1 & for /l %i in (1,0,2) do @rem").arg(begun);
    QStringList waits{command};
    if (Interrupter::endsReads)
        waits << "--passwords=-"
              << "--password-file=-";
    for (const QString &option : waits) {
        const std::string name = option.toStdString();
        const Interrupter interrupter;
        QProcess process;
        process.start(QStringLiteral(TORVANE_FLEET), onA1("verify") << option << "--json"
                                                                    << "--wait"
                                                                    << "90");
        ASSERT_TRUE(process.waitForStarted());
        do
            QThread::msleep(500);
        while (option == command && !QFile::exists(begun));
        interrupter.interrupt(process);
        ASSERT_TRUE(process.waitForFinished(90'000)) << name;
        const Ended run{process.exitCode(), process.readAllStandardOutput().toStdString(), {}};
        EXPECT_EQ(run.status, 130) << name;
        EXPECT_EQ(run.summary("status"), 130) << name;
        // The command runs when the cameras are chosen; the files are read before.
        const int chosen = option == command ? 1 : 0;
        EXPECT_EQ(run.summary("selected"), chosen) << name;
        EXPECT_EQ(run.summary("failed"), chosen) << name;
    }
    EXPECT_TRUE(fleet.simulator.calls("GCWritePort").empty());
}

} // namespace
