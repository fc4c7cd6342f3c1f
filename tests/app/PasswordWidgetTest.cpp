// SPDX-License-Identifier: MIT
// The panel over a simulated camera, told as stories: what a user sees after each step, and what the camera was told.
#include "PasswordWidget.h"

#include "AppFixture.h"
#include "Device.h"
#include "PanelParts.h"
#include "PasswordControl.h"

#include <QAction>
#include <QMainWindow>
#include <iostream>

namespace {

const QString lockedCamera = "[Unlock] [Change password] [Factory reset]";
const QString unlockedCamera = "[Lock] [Change password] [Factory reset]";
const QString entering = "(Unlock) (Change password) (Factory reset) Password=";
const QString change =
    " (Change password) (Factory reset) Old password=%1 New password=%2 Confirm password=%3";
const QString forced = "(Change password) Default password=%1 New password=%2 Confirm password=%3";
const QString ok = " [OK] [Cancel]";
const QString noOk = " (OK) [Cancel]";
const QString refused = "Unlocking failed! <a href=\"#forgotPassword\">Forgot password?</a>";
const QString wrong = "<Unlocking failed! Wrong password?>";
const QString tooShort = "<Your password is to short. (min 3 characters)>";
const QString changed = "!Successfully changed the password!";

// A panel that is shown for the selected one camera.
struct Panel : CameraList
{
    // The settings of its camera, and further lines of the configuration.
    explicit Panel(const QString &settings, const std::string &more = {}, bool isSelected = true)
        : CameraList(cameras("A," + settings) + more)
    {
        // As in the application: what asks on standard input finds nothing to read.
        std::cin.setstate(std::ios_base::eofbit);
        backEnd->discoverLibraries(true);
        backEnd->updateDevices();
        if (isSelected)
            backEnd->selectDevice(backEnd->devices().at(0));
        window.show();
        widget = new PasswordWidget(&window, backEnd);
        widget->show();
        QObject::connect(widget, &PasswordWidget::lockChanged, [this] { viewsAtChange << view(); });
    }

    // Steps are the label of a button, "Return" in the first field, a text for a field ("old=hunter22"), and "elsewhere":
    // somebody else opens the lock.
    void take(const QString &steps)
    {
        for (const QString &step : steps.split(", ", Qt::SkipEmptyParts)) {
            const int place = QStringList{"old", "new", "confirm"}.indexOf(step.section('=', 0, 0));
            if (place >= 0)
                field(place).type(step.section('=', 1));
            else if (step == "Return")
                QTest::keyClick(field(0).edit, Qt::Key_Return);
            else if (step == "elsewhere")
                backEnd->devices().at(0)->unlock("hunter22");
            else if (QPushButton *const button = shownButton(widget, step))
                QTest::mouseClick(button, Qt::LeftButton);
        }
    }

    // Takes steps and compares what is seen then, what the panel says, and what has been written to the camera since the
    // last time. A change of the lock is told ("!" for each) while the panel still stands in the dialogue.
    void expect(const QString &steps, const QString &seen, const QString &said = {},
                const QString &written = {})
    {
        viewsAtChange.clear();
        take(steps);
        const QString told = viewsAtChange.contains(view()) ? "late" : QString(viewsAtChange.count(), '!');
        QCOMPARE(QStringList({steps, view(), told + status()->text(), takeWrites()}).join('\n'),
                 QStringList({steps, seen, said, written}).join('\n'));
    }

    // Buttons, those that are disabled in parentheses, and fields with their complaints, from top to bottom.
    QString view() const
    {
        QStringList seen;
        const auto see = [&seen](const QWidget *part) {
            for (const QPushButton *button : part->findChildren<QPushButton *>())
                if (button->isVisible())
                    seen << (button->isEnabled() ? '[' + button->text() + ']' : '(' + button->text() + ')');
        };
        see(partOf<QWidget>(widget, 0));
        for (const int place : {0, 1, 2}) {
            const FieldParts parts = field(place);
            const QString error = parts.error->text().isEmpty() ? "" : '<' + parts.error->text() + '>';
            if (parts.edit->isVisible())
                seen << parts.caption->text() + parts.edit->placeholderText() + '=' + parts.edit->text() +
                            error;
        }
        see(inputBox());
        return seen.join(' ');
    }

    // The writes of Simulator::lockTraffic.
    QString takeWrites()
    {
        QStringList words = QString::fromStdString(simulator.lockTraffic()).split(' ', Qt::SkipEmptyParts);
        simulator.clearLog();
        return words.filter(QRegularExpression("^[A-Z]")).join(' ');
    }

    QLabel *status() const { return partOf<QLabel>(widget, 3); }
    QWidget *inputBox() const { return partOf<QWidget>(widget, 1); }
    FieldParts field(int place) const { return FieldParts(partOf<QWidget>(inputBox(), place)); }

    std::shared_ptr<BackEnd> backEnd = std::make_shared<BackEnd>();
    QMainWindow window;
    PasswordWidget *widget = nullptr;
    MessageBoxes boxes;
    QStringList viewsAtChange;
};

} // namespace

class PasswordWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void unlocking();
    void wrongPassword();
    void locking();
    void changing();
    void refusedChange();
    void firstChange();
    void hiddenFieldsTakeNoKeys();
    void factoryReset();
    void nothingIsLeftToUndo();
    void closedPanelKeepsNoText();
    void escape();
};

void PasswordWidgetTest::unlocking()
{
    Panel("lock=none").expect("", unlockedCamera);
    Panel("lock=locked", {}, false).expect("", lockedCamera);
    Panel panel("lock=locked");
    panel.expect("Unlock, old=ab, OK", entering + "ab" + tooShort + noOk);
    panel.expect("Cancel", lockedCamera);
    panel.expect("Unlock, old=hunter22, OK", unlockedCamera, "!Successfully unlocked!", "TRY:hunter22");
    panel.expect("Lock", lockedCamera, "!Successfully locked!", "LOCK");
}

// The link opens a box, whatever its target. A camera that opened meanwhile is told in the same words.
void PasswordWidgetTest::wrongPassword()
{
    Panel panel("lock=locked");
    panel.expect("Unlock, Return", entering + noOk, refused);
    panel.expect("old=ab, Return", entering + "ab" + wrong + noOk, refused, "TRY:ab");
    panel.expect("old=wrong, OK", entering + "wrong" + wrong + noOk, refused, "TRY:wrong");
    panel.expect("old=wrong2", entering + "wrong2" + ok, refused);
    panel.expect("old=wrong", entering + "wrong" + wrong + noOk, refused);

    QCoreApplication::processEvents(); // lays out the link
    const int x = panel.status()->fontMetrics().horizontalAdvance("Unlocking failed! F");
    QTest::mouseClick(panel.status(), Qt::LeftButton, {}, {x, panel.status()->height() / 2});
    emit panel.status()->linkActivated("elsewhere");
    const QString box =
        "Forgot password? You can reset the password to factory defaults with 'FactoryReset'.\n"
        "Attention! This also resets all other camera parameters.\n\n"
        "Alternatively, contact the TVN support team. icon 1";
    QCOMPARE(panel.boxes.taken(), QStringList({box, box}));

    panel.expect("Cancel, Unlock, old=wrong", entering + "wrong" + ok);
    panel.expect("elsewhere, OK", entering + "wrong" + wrong + noOk, refused, "TRY:hunter22");
    panel.expect("Cancel", unlockedCamera);
}

void PasswordWidgetTest::locking()
{
    Panel panel("lock=unlocked", "[[failure]]\nfunction = \"GCWritePort\"\naddress = 0x50001008");
    panel.expect("Lock", unlockedCamera, "Locking failed!");
    panel.expect("Change password", "(Lock)" + change.arg("", "", "") + noOk);
    panel.expect("Cancel, Lock", lockedCamera, "!Successfully locked!", "LOCK");
}

void PasswordWidgetTest::changing()
{
    Panel panel("lock=locked");
    const QString fields = "(Unlock)" + change;
    panel.expect("Change password, old=hunter22, new=ocean55, confirm=ocean55, Return",
                 fields.arg("hunter22", "ocean55", "ocean55") + ok);
    panel.expect("new=oc, confirm=oc", fields.arg("hunter22", "oc" + tooShort, "oc") + noOk);
    panel.expect("new=ocean55, confirm=ocean55, old=", fields.arg("", "ocean55", "ocean55") + noOk);
    panel.expect("old=hunter22, new=ocean5",
                 fields.arg("hunter22", "ocean5", "ocean55<Passwords must match!>") + noOk);
    panel.expect("Cancel, Change password", fields.arg("", "", "") + noOk);
    panel.expect("old=hunter22, new=ocean55, confirm=ocean55, OK", unlockedCamera, changed,
                 "TRY:hunter22 SET:ocean55 LOCK TRY:ocean55");
    panel.expect("Lock, Unlock", entering + noOk, "!", "LOCK");
}

// The lock of an open camera falls with the try, which the panel notices at its next reset only, and tells nobody.
void PasswordWidgetTest::refusedChange()
{
    Panel panel("lock=unlocked", "[[failure]]\nfunction = \"GCWritePort\"\naddress = 0x50002000\ncount = 0");
    const QString fields = "(Lock)" + change;
    const QString used = "ocean55<This password has been used before.>";
    const QString notSet = "Could not set password.";
    panel.expect("Change password, old=wrong, new=ocean55, confirm=ocean55, OK",
                 fields.arg("wrong" + wrong, "ocean55", "ocean55") + noOk, refused, "LOCK TRY:wrong");
    panel.expect("old=ocean55, OK", fields.arg("ocean55", "ocean55", "ocean55") + ok,
                 "Changing the password failed!");
    panel.expect("old=hunter22, OK", fields.arg("hunter22", used, "ocean55") + noOk, notSet,
                 "TRY:hunter22 LOCK TRY:ocean55");
    panel.expect("new=ocean56, confirm=ocean56", fields.arg("hunter22", "ocean56", "ocean56") + ok, notSet);
    panel.expect("Cancel", lockedCamera);
    panel.expect("Change password, old=hunter22, new=ocean55, confirm=ocean55",
                 "(Unlock)" + change.arg("hunter22", "ocean55", "ocean55") + ok);
}

// With "password_state_value" the camera goes on saying that it has the default password.
void PasswordWidgetTest::firstChange()
{
    const QString steps = "old=mapleoak, new=ocean55, confirm=ocean55, OK";
    const QString empty = forced.arg("", "", "") + noOk;
    const QString written = "TRY:mapleoak SET:ocean55 LOCK TRY:ocean55";
    Panel("lock=default,password_state_value=0").expect(steps, empty, changed, written);
    Panel panel("lock=default");
    panel.expect("", empty);
    panel.expect("old=mapleoak, new=ocean55, Cancel", empty);
    panel.expect(steps, unlockedCamera, changed, written);
}

void PasswordWidgetTest::hiddenFieldsTakeNoKeys()
{
    Panel panel("lock=locked");
    QVERIFY(QTest::qWaitForWindowActive(panel.widget));
    panel.take("Unlock");
    QVERIFY(!qobject_cast<QLineEdit *>(QApplication::focusWidget()));
    QTest::mouseClick(panel.field(0).edit, Qt::LeftButton);
    QTRY_COMPARE(QApplication::focusWidget(), panel.field(0).edit);
    panel.take("old=hunter22");
    for (int time = 0; time < 2; ++time) {
        QTest::keyClick(panel.widget->windowHandle(), Qt::Key_Return);
        QCOMPARE(panel.status()->text(), QString("Successfully unlocked!"));
    }
    QTest::keyClick(panel.widget->windowHandle(), Qt::Key_X);
    panel.take("Change password");
    QCOMPARE(panel.view(), "(Lock)" + change.arg("", "", "") + noOk);
}

// The camera's going away is expected from then on.
void PasswordWidgetTest::factoryReset()
{
    Panel panel("lock=locked");
    panel.boxes.answer = QMessageBox::Cancel;
    panel.expect("Factory reset", lockedCamera);
    panel.boxes.answer = QMessageBox::Ok;

    panel.take("Factory reset");
    const QString box = "Factory reset. The camera must reboot. This can take a while...\n"
                        "Attention! This also resets all other camera parameters. icon 2 CANCEL";
    QCOMPARE(panel.boxes.taken(), QStringList({box, box}));
    QCOMPARE(panel.takeWrites(), QString("RESET"));
    QVERIFY(panel.widget->isHidden() && !QGuiApplication::overrideCursor());
    QVERIFY(panel.backEnd->devices().empty());
    panel.widget->onCurrentDeviceRemoved();
    QCOMPARE(panel.boxes.taken(), QStringList());
}
// The eye shows the field in the clear, where undo would show what has been there.
void PasswordWidgetTest::nothingIsLeftToUndo()
{
    Panel panel("lock=locked");
    QLineEdit *const edit = panel.field(0).edit;
    panel.take("Unlock");
    QTest::keyClicks(edit, "hunter22");
    panel.take("Return, Change password");
    edit->actions().first()->trigger();
    for (const auto key : {QKeySequence::Undo, QKeySequence::Redo}) {
        QTest::keySequence(edit, key);
        QCOMPARE(panel.view(), "(Lock)" + change.arg("", "", "") + noOk);
    }
}

void PasswordWidgetTest::closedPanelKeepsNoText()
{
    Panel panel("lock=unlocked", "[[failure]]\nfunction = \"GCWritePort\"\naddress = 0x50002000\n");
    panel.take("Change password, old=hunter22, new=ocean55, confirm=ocean55, OK, "
               "old=wrong, new=ocean56, confirm=ocean56, OK");
    const auto kept = [&] {
        QString texts;
        for (const PasswordControl *field : panel.widget->findChildren<PasswordControl *>()) {
            texts += field->text() + field->excludePasswordString() + field->comparePasswordString();
            for (const std::string &used : field->usedPasswords())
                texts += QString::fromStdString(used);
        }
        return texts;
    };
    QCOMPARE(kept(), QString("wrongwrongocean56wrongocean55ocean56ocean56"));
    panel.widget->close();
    QCOMPARE(kept(), QString());
}

// From the resting panel and from the dialogue, as the window manager's close does.
void PasswordWidgetTest::escape()
{
    for (const char *const steps : {"", "Unlock"}) {
        Panel panel("lock=locked");
        bool isClosed = false;
        connect(panel.widget, &PasswordWidget::closed, [&] { isClosed = true; });
        QTRY_COMPARE(QApplication::activeWindow(), panel.widget);
        panel.take(steps);
        QTest::keyClick(panel.widget->windowHandle(), Qt::Key_Escape);
        QVERIFY2(panel.widget->isHidden() && isClosed, steps);
    }
}

QTEST_MAIN(PasswordWidgetTest)
#include "PasswordWidgetTest.moc"
