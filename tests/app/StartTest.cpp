// SPDX-License-Identifier: MIT
// What takes a process of its own: the program from its start to its exit status.
#include "AppFixture.h"

#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSysInfo>
#include <algorithm>

class StartTest : public QObject
{
    Q_OBJECT

private slots:
    void streams_data();
    void streams();
    void withoutDisplay_data();
    void withoutDisplay();

private:
    void run(const QString &command, const QStringList &arguments)
    {
        program.start(command, arguments);
        QVERIFY2(program.waitForStarted(), qPrintable(program.errorString()));
        program.setTextModeEnabled(true); // what it prints has the line ends of the system
        const bool hasEnded = program.waitForFinished();
        if (!hasEnded)
            program.kill();
        QVERIFY(hasEnded);
    }

    const bool isWindows = QSysInfo::kernelType() == "winnt";
    const QString path = QFileInfo(TORVANE_GUI_WATCHED).absoluteFilePath(); // with the drive
    QProcess program; // its standard input stays open and silent, as a terminal does
};

void StartTest::streams_data()
{
    std::vector<std::vector<const char *>> rows{
        {"a silent terminal", "",
         "status: Unlocking failed! <a href=\"#forgotPassword\">Forgot password?</a>\n"}};
    if (!isWindows)
        rows.insert(rows.end(), {{"a pipe whose reader leaves", "\"$0\" | head -1"},
                                 {"closed", "exec \"$0\" <&- >&- 2>&-"}});
    addRows({"streams", "said"}, rows);
}

// The empty password falls to the prompt of the back end, which finds the end of the input. Where nobody reads what it
// prints, the camera is closed all the same, and the files that the producer opens are its own.
void StartTest::streams()
{
    QFETCH(QString, streams);
    QFETCH(QString, said);
    const CameraList list(cameras("A"));
    if (streams.isEmpty())
        run(path, {});
    else
        run("sh", {"-c", streams, path});
    QVERIFY(program.readAllStandardOutput().contains(said.toUtf8()));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
    const auto calls = list.simulator.calls();
    QCOMPARE(calls.back(), std::string("GCCloseLib() = 0"));
    QCOMPARE(list.simulator.openHandles(), 0);
    QVERIFY(std::all_of(calls.begin(), calls.end(),
                        [](const std::string &call) { return call.find(") = ") != std::string::npos; }));
}

void StartTest::withoutDisplay_data()
{
    const char *const noDisplay = "^$|^torvane_gui: There is no display, or it can't be used "
                                  "\\(could not connect to display :none\\). torvane_console needs none.\n$";
    const char *const noPlugin =
        "^$|^torvane_gui: There is no display, or it can't be used "
        "\\(Could not find the Qt platform plugin \"paper\" .*\\). torvane_console needs none.\n$";
    std::vector<std::vector<const char *>> rows{
        {"help", "-platform paper --help", "0",
         "^Usage: torvane_gui .*GENICAM_GENTL64_PATH.* separated by \"[;:].*|^$"},
        {"version", "--version", "0", "^torvane_gui 1.0.0.0\n$|^$"}};
    if (!isWindows) // which always has a display
        rows.insert(rows.end(), {{"no display", "-platform xcb", "1", noDisplay},
                                 {"no such platform", "-platform paper", "1", noPlugin}});
    addRows({"arguments", "status", "said"}, rows);
}

// Standard output and then standard error, each of them whole.
void StartTest::withoutDisplay()
{
    QFETCH(QString, arguments);
    QFETCH(QString, said);
    const Environment display("DISPLAY", ":none");
    run(path, arguments.split(' '));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QTEST(QString::number(program.exitCode()), "status");
    const QList<QByteArray> outputs{program.readAllStandardOutput(), program.readAllStandardError()};
    for (int place = 0; place < 2; ++place) {
        const QRegularExpression pattern(said.section('|', place, place),
                                         QRegularExpression::DotMatchesEverythingOption);
        QVERIFY2(pattern.match(outputs[place]).hasMatch(), outputs[place]);
    }
}

QTEST_MAIN(StartTest)
#include "StartTest.moc"
