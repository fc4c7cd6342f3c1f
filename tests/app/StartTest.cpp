// SPDX-License-Identifier: MIT
// What takes a process of its own: the program from its start to its exit status.
#include "AppFixture.h"

#include <QProcess>

class StartTest : public QObject
{
    Q_OBJECT

private slots:
    void withoutProducer();
    void withoutInput();
    void dataOutsideTheRows();

private:
    void run(const QString &user)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("TORVANE_TEST_USER", user);
        program.setProcessEnvironment(environment);
        program.start(QCoreApplication::applicationDirPath() + "/torvane_gui_watched", QStringList());
        const bool hasEnded = program.waitForFinished();
        program.kill();
        QVERIFY(hasEnded);
        QStringList lines;
        for (const QByteArray &line : program.readAllStandardOutput().split('\n')) {
            if (line.startsWith("user: "))
                lines << line.mid(6);
        }
        seen = lines.join('\n');
    }

    QProcess program; // its standard input stays open and silent, as a terminal does
    QString seen;
};

void StartTest::withoutProducer()
{
    const CameraList list(cameras("A"));
    const Environment nowhere("GENICAM_GENTL64_PATH", list.simulator.folder().string());
    run("waits");
    QCOMPARE(
        seen,
        QString(
            "Could not open any CTI. Please make sure that the *.cti file is located in the same folder as "
            "your application and restart the application.\nwindow shown\nwindow closed after 2 s"));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
}

// The empty password falls to the prompt of the back end, which finds the end of the input.
void StartTest::withoutInput()
{
    const CameraList list(cameras("A"));
    run("unlocks");
    QVERIFY(
        seen.startsWith("window shown\nUnlocking failed! <a href=\"#forgotPassword\">Forgot password?</a>\n"
                        "window closed"));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
    QCOMPARE(list.simulator.openHandles(), 0);
}

void StartTest::dataOutsideTheRows()
{
    const CameraList list(cameras("A"));
    run("paints");
    QCOMPARE(program.exitStatus(), QProcess::CrashExit);
    QVERIFY(program.readAllStandardError().contains("std::out_of_range"));
}

QTEST_MAIN(StartTest)
#include "StartTest.moc"
