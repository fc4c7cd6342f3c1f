// SPDX-License-Identifier: MIT
// What takes a process of its own: the program from its start to its exit status.
#include "AppFixture.h"

#include <QProcess>

class StartTest : public QObject
{
    Q_OBJECT

private slots:
    void withoutInput();

private:
    QProcess program; // its standard input stays open and silent, as a terminal does
};

// The empty password falls to the prompt of the back end, which finds the end of the input.
void StartTest::withoutInput()
{
    const CameraList list(cameras("A"));
    program.start(QCoreApplication::applicationDirPath() + "/torvane_gui_watched", QStringList());
    const bool hasEnded = program.waitForFinished();
    program.kill();
    QVERIFY(hasEnded);
    QVERIFY(program.readAllStandardOutput().contains(
        "status: Unlocking failed! <a href=\"#forgotPassword\">Forgot password?</a>\n"));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
    QCOMPARE(list.simulator.openHandles(), 0);
}

QTEST_MAIN(StartTest)
#include "StartTest.moc"
