// SPDX-License-Identifier: MIT
// A long run of the whole window: cameras come and go by the hundred in passes on the update thread, while a user
// moves the mouse, selects and activates rows and presses whatever the panel offers. Neither waits for the other. In the
// end the window works, its rows are what is plugged, and no call went to a camera whose row had not been activated.
//
// The changes and the user's choices are drawn from TORVANE_STRESS_SEED, the moments at which they meet are not.
// TORVANE_STRESS_CHANGES sets how many changes there are; TORVANE_STRESS_LOG names a file for the simulator's log.
#include "Capture.h"
#include "StressSession.h"

#include <QMutex>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>

namespace {

// What must have happened in a thousand changes, else the run has proved nothing. On a busy machine it is some ten
// times as much.
const std::map<QString, int> least{{"mouse moves over the list", 500},
                                   {"paints during a pass", 200},
                                   {"paints before a cut is announced", 5},
                                   {"panels", 10},
                                   {"panels opened during a pass", 5},
                                   {"buttons pressed during a pass", 30},
                                   {"opens", 10},
                                   {"writes", 15},
                                   {"Successfully locked!", 1},
                                   {"Successfully unlocked!", 1},
                                   {"Successfully changed the password!", 1},
                                   {"Unlocking failed!", 2},
                                   {"Factory reset. OK", 1},
                                   {"Factory reset. Cancel", 1},
                                   {"This camera is not password protected.", 5},
                                   {"The camera has been removed...", 50}};

unsigned setting(const char *name, unsigned otherwise)
{
    return qEnvironmentVariableIsSet(name) ? qEnvironmentVariable(name).toUInt() : otherwise;
}

QMutex warningsMutex;
QStringList warnings; // of Qt, from any thread

void keepWarning(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    const QMutexLocker lock(&warningsMutex);
    if (type == QtWarningMsg && !text.startsWith("This plugin does not support")) // the offscreen platform
        warnings << text;
}

} // namespace

class StressTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void strayCalls_data();
    void strayCalls();
    void changes();
};

// As the application does: what asks on standard input finds nothing to read.
void StressTest::initTestCase()
{
    std::cin.setstate(std::ios_base::eofbit);
}

void StressTest::strayCalls_data()
{
    QTest::addColumn<QString>("calls");
    QTest::addColumn<int>("strays");
    const QString probe = "IFOpenDevice(h2, \"A\", 2) = 0 h3|DevClose(h3) = 0|";
    const QString open = "IFOpenDevice(h2, \"%1\", 3) = 0 h%2|DevGetPort(h%2) = 0 h%3|";
    const QString write = "GCWritePort(h%1, 0x50001008, 4) = %2 [01 00 00 00]|";
    const QString openA = open.arg("A").arg(10).arg(11);
    const QString openB = open.arg("B").arg(20).arg(21);
    // What an activation of A has led to stands between two "*".
    QTest::newRow("the activated one") << probe + '*' + openA + '*' + write.arg(11).arg(0) << 0;
    QTest::newRow("another one") << openB + '*' + openA + '*' + write.arg(21).arg(0) << 2;
    QTest::newRow("another one, refused") << probe + '*' + openA + '*' + write.arg(20).arg(-1006) << 1;
    QTest::newRow("opened without an activation") << "**" + openA + write.arg(11).arg(0) << 1;
    QTest::newRow("another one opened") << '*' + openB + '*' << 1;
    QTest::newRow("before the activation") << write.arg(11).arg(0) + '*' + openA + '*' << 1;
}

// What is to find a call to another camera must be able to.
void StressTest::strayCalls()
{
    QFETCH(QString, calls);
    QFETCH(int, strays);
    const QStringList parts = calls.replace('|', '\n').split('*');
    const auto begin = static_cast<std::uintmax_t>(parts[0].size());
    const Activation activation{begin, begin + static_cast<std::uintmax_t>(parts[1].size()), "A"};
    std::istringstream log(parts.join("").toStdString());
    const UserCalls found = readUserCalls(log, {activation});
    QVERIFY2(found.strays.count() == strays, qPrintable(found.strays.join('\n')));
    QCOMPARE(found.leftOpen.isEmpty(), !calls.contains(", 3)"));
}

void StressTest::changes()
{
    const unsigned seed = setting("TORVANE_STRESS_SEED", 20260107);
    const int changes = static_cast<int>(setting("TORVANE_STRESS_CHANGES", 1000));
    qInfo("seed %u, %d changes", seed, changes);
    std::optional<StressSession> session;
    {
        CaptureOutput backEnd; // tells of each call that fails
        const QtMessageHandler before = qInstallMessageHandler(keepWarning);
        session.emplace(seed, changes);
        session->run();
        session->useOnceMore();
        session->end();
        qInstallMessageHandler(before);
    }
    const auto logPath = session->simulator.logPath();
    if (qEnvironmentVariableIsSet("TORVANE_STRESS_LOG"))
        std::filesystem::copy_file(logPath, qEnvironmentVariable("TORVANE_STRESS_LOG").toStdString(),
                                   std::filesystem::copy_options::overwrite_existing);
    std::ifstream log(logPath);
    const UserCalls calls = readUserCalls(log, session->activations);
    std::map<QString, int> counts = session->counts;
    counts["opens"] = calls.opens;
    counts["writes"] = calls.writes;
    counts.merge(session->changeCounts());
    for (const auto &[what, count] : counts)
        qInfo("%6d %s", count, qPrintable(what));

    QCOMPARE(calls.strays.join('\n'), QString());
    QCOMPARE(session->faults.join('\n'), QString());
    QCOMPARE(warnings.join('\n'), QString());
    QCOMPARE(calls.leftOpen.join('\n'), QString());
    QCOMPARE(counts["changes"], changes);
    for (const auto &[what, count] : least)
        QVERIFY2(counts[what] >= count * changes / 1000, qPrintable("too few: " + what));
}

QTEST_MAIN(StressTest)
#include "StressTest.moc"
