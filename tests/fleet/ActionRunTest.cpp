// SPDX-License-Identifier: MIT
// torvane verify, unlock, lock and reset over simulated cameras; and what stops any run.
#include "Fleet.h"
#include "FullDisk.h"
#include "Shell.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QProcess>
#include <filesystem>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const QString all = "--all";
const QString verify = "verify";
const QString passwordFile = "--password-file";
const QString passwords = "--passwords";
const QString serial = "--serial";

std::string mixed()
{
    return cameras(camera("A1") + camera("A2", "password = \"other\"") + camera("A3", "lock = \"unlocked\"") +
                   camera("A4", "lock = \"none\"") + camera("A5", "access = \"busy\"") +
                   camera("A6", "access = \"readonly\""));
}

TEST(ActionRun, VerifyProvesAndLeavesTheLockAsItWas)
{
    const Fleet fleet(mixed());
    const Ended run = fleet.act({verify, all, passwordFile, fleet.file("p", "hunter22")});
    EXPECT_THAT(run.outcomes(), ElementsAre("A1 done", "A2 failed wrong_password", "A3 not_proved unlocked",
                                            "A4 skipped no_lock", "A5 failed held", "A6 failed read_only"));
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.summary("selected"), 6);
    EXPECT_EQ(run.summary("failed"), 4);
    EXPECT_EQ(fleet.opens("A1", "3"), 1);
    EXPECT_EQ(fleet.opens("A1", "2"), 0);
    EXPECT_EQ(run.lines()[0].value("lock").toString(), "locked");
    EXPECT_EQ(run.lines()[0].value("password").toString(), "user");
    EXPECT_TRUE(run.lines()[0].value("mac").isString());
    EXPECT_THAT(run.output + run.errors + fleet.journal(), Not(HasSubstr("hunter22")));
    EXPECT_EQ(fleet.states()[0], "A1 locked user");
    EXPECT_EQ(fleet.states()[2], "A3 unlocked user");
}

TEST(ActionRun, StatusesOfRunsThatDidNothing)
{
    const Fleet fleet(mixed());
    const QString wrong = fleet.file("p", "wrong");
    const QString audit = fleet.file("audit", "");
    std::filesystem::current_path(fleet.simulator.folder());
    const auto irregular = testsystem::makeIrregularFiles();
    struct Row
    {
        QStringList arguments;
        int status;
        std::vector<std::string> outcomes;
    };
    for (const Row &row : {Row{{verify, serial, "A[12]", passwordFile, wrong}, 4, {}},
                           {{verify, serial, "A1", serial, "A2", passwordFile, wrong},
                            7,
                            {"A1 failed wrong_password", "A2 failed wrong_password"}},
                           {{verify, serial, "A1", passwordFile, fleet.file("long", std::string(65, 'x'))},
                            2,
                            {"A1 refused rule"}},
                           {{verify, serial, "A5", passwordFile, wrong}, 5, {"A5 failed held"}},
                           {{"lock", serial, "A4"}, 1, {"A4 failed no_lock"}},
                           {{"lock", serial, "A1"}, 0, {"A1 unchanged"}},
                           {{"lock"}, 2, {}},
                           {{"lock", all, "--nonsense"}, 2, {}},
                           {{"lock", all, "--audit", "/nowhere/audit"}, 2, {}},
                           {{"lock", all, "--audit", QString::fromStdString(irregular[0])}, 2, {}},
                           {{"change", "--factory", "--on-changed=/no/program"}, 2, {}},
                           {{verify, all, "--password-command", " "}, 2, {}},
                           {{"lock", all, "--audit", "/dev/full"}, 2, {}},
                           {{"lock", all, "--library", wrong}, 1, {}},
                           {{verify, serial, "A1"}, 2, {"A1 refused no_secret"}},
                           {{verify, all, passwordFile, "-", passwords, "-"}, 2, {}},
                           {{"reset", serial, "A1", serial, "A2", "--audit", audit},
                            2,
                            {"A1 refused rule", "A2 refused rule"}}}) {
        const Ended run = fleet.act(row.arguments);
        EXPECT_EQ(run.status, row.status) << row.arguments.join(' ').toStdString() << run.errors;
        EXPECT_EQ(run.summary("status"), row.status) << row.arguments.join(' ').toStdString();
        EXPECT_EQ(run.outcomes(), row.outcomes) << row.arguments.join(' ').toStdString();
    }
    EXPECT_EQ(fleet.states()[0], "A1 locked user");
    QFile audited(audit);
    ASSERT_TRUE(audited.open(QIODevice::ReadOnly));
    EXPECT_EQ(audited.readAll().count('\n'), 2);
}

TEST(ActionRun, WhatNeedsNoSecretNeedsNoLine)
{
    const Fleet fleet(
        cameras(camera("A1") + camera("A3", "lock = \"unlocked\"") + camera("A4", "lock = \"none\"")));
    const QString file = fleet.file("p", R"({"serial": "A1", "current": "hunter22"})");
    EXPECT_THAT(fleet.act({"unlock", all, passwords, file}).outcomes(),
                ElementsAre("A1 done", "A3 unchanged", "A4 skipped no_lock"));
    EXPECT_EQ(fleet.opens("A1", "2"), 0);
    EXPECT_EQ(fleet.opens("A4", "2"), 1);
    EXPECT_THAT(fleet.act({verify, all, passwords, file}).outcomes(),
                ElementsAre("A1 skipped not_reached", "A3 refused no_secret", "A4 skipped no_lock"));
}

TEST(ActionRun, AFullDiskLosesNoLineInSilence)
{
    const Fleet fleet(cameras(camera("A1")));
    const QString audit = fleet.file("audit", "");
    constexpr int limit = 1'000'000;
    std::filesystem::resize_file(audit.toStdString(), limit);
    if (!limitFiles(limit))
        GTEST_SKIP() << "there is no limit for the files of a process here";
    const Ended run = fleet.act({"lock", all, "--audit", audit});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.summary("status"), 3);
    EXPECT_THAT(run.errors, HasSubstr(R"("serial":"A1")"));
}

TEST(ActionRun, AFileThatOthersCanReadHoldsNoSecret)
{
    const Fleet fleet(cameras(camera("A1")));
    const QString file = fleet.file("p", "hunter22");
    std::filesystem::permissions(file.toStdString(), std::filesystem::perms::group_read,
                                 std::filesystem::perm_options::add);
    if (testsystem::isPrivate(file.toStdString()))
        GTEST_SKIP() << "who can read a file is not judged here";
    const Ended run = fleet.act({verify, all, passwordFile, file});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.errors, HasSubstr("chmod 600 '" + file.toStdString() + "'"));
    EXPECT_EQ(run.summary("status"), 2);
    EXPECT_TRUE(fleet.simulator.calls("IFOpenDevice").empty());
}

TEST(ActionRun, ALockIsOpenedAndClosedWithProof)
{
    const Fleet fleet(mixed());
    const QString file = fleet.file("p", R"({"serial": "A1", "current": "hunter22"})");
    EXPECT_THAT(fleet.act({"unlock", "--from", "-", passwords, file}, "\xef\xbb\xbf\n A1\t\r\n").outcomes(),
                ElementsAre("A1 done"));
    EXPECT_EQ(fleet.states()[0], "A1 unlocked user");
    const Ended again = fleet.act({"lock", "--unlocked"});
    EXPECT_THAT(again.outcomes(), ElementsAre("A1 done", "A3 done"));
    EXPECT_EQ(fleet.states()[0], "A1 locked user");
}

TEST(ActionRun, ALockThatCouldNotBeReadIsPutBackAllTheSame)
{
    Fleet fleet(cameras(camera("A1")));
    // The reads: at the open, before the work, and after the password was sent.
    fleet.simulator.failNth("GCReadPort", -1011, 3, 1, "address = 0x50001000\n");
    const Ended run = fleet.act({verify, all, passwordFile, fleet.file("p", "hunter22")});
    EXPECT_THAT(run.outcomes(), ElementsAre("A1 failed read_failed"));
    EXPECT_EQ(fleet.states()[0], "A1 locked user");
}

TEST(ActionRun, RelockProvesThePasswordOfAnUnlockedCamera)
{
    const Fleet fleet(cameras(camera("A1", "lock = \"unlocked\"") +
                              camera("A2", "lock = \"unlocked\"\npassword = \"other\"")));
    const Ended run = fleet.act({verify, all, "--relock", passwordFile, fleet.file("p", "hunter22")});
    EXPECT_THAT(run.outcomes(), ElementsAre("A1 done", "A2 failed wrong_password"));
    EXPECT_THAT(fleet.states(), ElementsAre("A1 unlocked user", "A2 locked user"));
}

TEST(ActionRun, AResetCameraComesBackOnItsFactoryPassword)
{
    // What a look has chosen is not opened a third time to see that.
    for (const auto &[option, password] : {std::pair{"--serial A1", "factory"}, {"--unlocked", "unknown"}}) {
        const Fleet fleet(cameras(camera("A1", "reboot_ms = 300\nlock = \"unlocked\"") + camera("A2")));
        const Ended run =
            fleet.act(QStringList{"reset", "--yes"} + QString::fromLatin1(option).split(QLatin1Char(' ')));
        EXPECT_THAT(run.outcomes(), ElementsAre("A1 done")) << option;
        EXPECT_EQ(run.lines()[0].value("password").toString().toStdString(), password);
        EXPECT_EQ(fleet.opens("A1", "2") + fleet.opens("A1", "3"), 2) << option;
        EXPECT_EQ(fleet.opens("A2", "3"), 0);
        EXPECT_THAT(fleet.states(), ElementsAre("A1 locked factory", "A2 locked user"));
    }
}

TEST(ActionRun, ADryRunOpensNothingForWritingAndLeavesNothing)
{
    const Fleet fleet(mixed());
    const QString audit = fleet.file("audit", "");
    const Ended run = fleet.act({"lock", all, "-n", "--audit", audit});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.summary("done"), 6);
    EXPECT_EQ(run.outcomes()[0], "A1 would");
    EXPECT_THAT(fleet.simulator.calls("IFOpenDevice"), IsEmpty());
    EXPECT_EQ(fleet.journal(), "");
    EXPECT_EQ(std::filesystem::file_size(audit.toStdString()), 0U);
}

TEST(ActionRun, OneRunAtATimeWrites)
{
    const Fleet fleet("[producer]\nlatency_ms = 100\n" + cameras(camera("A1") + camera("A2") + camera("A3")));
    QProcess first;
    fleet.start(first, {"lock", all, "--json", "--wait", "90"});
    ASSERT_TRUE(first.waitForReadyRead(60'000));
    const Ended second = fleet.run({"lock", all, "--json"});
    EXPECT_EQ(second.status, 6);
    EXPECT_EQ(second.summary("status"), 6);
    EXPECT_EQ(fleet.run({"list", "--quick"}).status, 0);
    first.waitForFinished(60'000);
    EXPECT_EQ(first.exitCode(), 0);
}

TEST(ActionRun, NoCameraChoosesWhoseSecretItIsSentOrWhatIsRun)
{
    const Fleet fleet(cameras(camera("--help", "id = \"1\"") + camera("../x", "id = \"2\"") +
                              camera("$(touch x)", "id = \"3\"") +
                              camera(std::string(255, 'x'), "id = \"4\"") + camera("B1")));
    const Ended run = fleet.act({verify, all, "--password-command", echo("{serial}")});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.outcomes(), ElementsAre("$(touch x) refused no_secret", "--help refused no_secret",
                                            "../x refused no_secret", "B1 skipped not_reached",
                                            std::string(255, 'x') + " refused rule"));
    EXPECT_TRUE(fleet.simulator.calls("GCWritePort").empty());
}

TEST(ActionRun, TwoCamerasOfOneSerialNumberAreToldApartByTheirIdentifiers)
{
    const Fleet fleet(cameras(camera("A1") + camera("A1", "id = \"twin\"", "02:00:00:00:00:99")));
    const QString secrets = fleet.file("p", R"({"serial": "A1", "current": "hunter22"})");
    for (const QStringList &chosen : {QStringList{serial, "A1"}, {"--id", "twin"}}) {
        const Ended run = fleet.act(QStringList{verify} + chosen + QStringList{passwords, secrets});
        EXPECT_EQ(run.status, 2);
        EXPECT_THAT(run.output, HasSubstr("A1 (SimCam), twin (SimCam)"));
    }
    const QString old = fleet.file("old", "hunter22");
    const QStringList change{"change",
                             "--id",
                             "twin",
                             passwordFile,
                             old,
                             "--new-password-file",
                             fleet.file("new", "new-twin"),
                             "--on-changed"};
    EXPECT_THAT(fleet.act(change + QStringList{echo("{serial}")}).outcomes(),
                ElementsAre("A1 refused shared_serial old"));
    EXPECT_TRUE(fleet.simulator.calls("GCWritePort").empty());
    const QString told = fleet.file("told", "");
    const QString hook = byShell("cat > %1", "more > %1").arg(told);
    EXPECT_THAT(fleet.act(change + QStringList{hook}).outcomes(), ElementsAre("A1 done new"));
    QFile file(told);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("02:00:00:00:00:99"));
    EXPECT_THAT(fleet.act({verify, serial, "A1", "--id", "twin", passwordFile, fleet.file("q", "new-twin")})
                    .outcomes(),
                ElementsAre("A1 done"));
    EXPECT_EQ(fleet.opens("A1", "3"), 0);
}

TEST(ActionRun, ATwinThatWasHeldStandsForNoOther)
{
    const Fleet fleet("[[failure]]\nfunction = \"IFOpenDevice\"\ncode = -1005\nid = \"A1\"\n" +
                      cameras(camera("A1", "lock = \"unlocked\"")) +
                      cameras(camera("A1", "id = \"twin\"\nlock = \"unlocked\"", "02:00:00:00:00:99"), "")
                          .replace(0, 24, "[[interface]]\nid = \"eth1\""));
    const QStringList lock{"lock", all};
    const Ended run = fleet.act(lock);
    EXPECT_THAT(run.outcomes(), ElementsAre("A1 failed shared_serial"));
    EXPECT_NE(run.status, 0);
}

TEST(ActionRun, ACameraThatAnswersZeroGetsNoSecret)
{
    const Fleet fleet(cameras(camera("A1", "lock_state_value = 0\npassword_state_value = 0\nip = \"0.0.0.0\"",
                                     "00:00:00:00:00:00")));
    const QString file = fleet.file("p", "hunter22");
    EXPECT_THAT(fleet.act({verify, all, passwordFile, file}).outcomes(),
                ElementsAre("A1 not_proved unlocked"));
    EXPECT_THAT(fleet.act({verify, all, "--relock", passwordFile, file}).outcomes(),
                ElementsAre("A1 failed write_failed"));
    for (const std::string &line : fleet.simulator.portTraffic())
        EXPECT_THAT(line, Not(HasSubstr("write 0x5000204")));
}

} // namespace
