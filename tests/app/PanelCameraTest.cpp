// SPDX-License-Identifier: MIT
// The panels of the window and their cameras: which one a panel may operate and close, what it keeps when it is closed,
// and what its row shows afterwards.
#include "AppFixture.h"
#include "DeviceListView.h"
#include "MainWindow.h"
#include "PanelParts.h"
#include "PasswordControl.h"
#include "PasswordWidget.h"

#include <QAction>

class PanelCameraTest : public QObject
{
    Q_OBJECT

private slots:
    void cameraThatCannotBeOpened_data();
    void cameraThatCannotBeOpened();
    void lateGoodbye();
    void resetAndBackWithinAPass();
    void nothingIsLeftToUndo();
    void closedPanelKeepsNoText();
    void escape();
};

namespace {

struct WindowList : CameraList
{
    explicit WindowList(const QString &plan) : CameraList(cameras(plan))
    {
        follow(window.findChild<DeviceItemModel *>());
        window.show();
        pass();
    }

    PasswordWidget *activate(int position)
    {
        view.setCurrentIndex(row(position));
        QTest::keyClick(&view, Qt::Key_Return);
        return window.findChildren<PasswordWidget *>().last();
    }

    MainWindow window;
    DeviceListView &view = *window.findChild<DeviceListView *>();
    MessageBoxes boxes;
};

QString statusOf(const PasswordWidget &panel)
{
    return partOf<QLabel>(&panel, 3)->text();
}

} // namespace

void PanelCameraTest::cameraThatCannotBeOpened_data()
{
    addRows({"lock"},
            {{"unlocked", "unlocked"}, {"locked", "locked"}, {"on its factory password", "default"}});
}

// Another program has taken the camera since its row was made.
void PanelCameraTest::cameraThatCannotBeOpened()
{
    QFETCH(QString, lock);
    WindowList list("A,lock=" + lock);
    list.simulator.failNth("IFOpenDevice", -1005, 1, 0);
    list.pass();
    list.simulator.clearLog();
    const PasswordWidget *const panel = list.activate(0);
    QCOMPARE(list.simulator.calls("IFOpenDevice").size(), 1U);
    QCOMPARE(statusOf(*panel), QString("The camera could not be opened. Another program may be using it."));
    for (const char *label : {lock == "unlocked" ? "Lock" : "Unlock", "Change password", "Factory reset"}) {
        QPushButton *const button = shownButton(panel, label);
        QVERIFY2(button && !button->isEnabled(), label);
    }
    QVERIFY(!partOf<QWidget>(panel, 1)->isVisible()); // nor is the change forced
}

// The panel of a camera that was closed long ago closes itself once more when another camera has gone. The one that is
// open by then is not its own, nor is its own camera when that is open for another panel.
void PanelCameraTest::lateGoodbye()
{
    for (const int next : {1, 0}) {
        WindowList list("A,lock=unlocked B,lock=unlocked");
        PasswordWidget *const older = list.activate(0);
        older->close();
        PasswordWidget *const panel = list.activate(next);
        older->onCurrentDeviceRemoved();
        QCOMPARE(list.boxes.taken().size(), 1);
        QTest::mouseClick(shownButton(panel, "Lock"), Qt::LeftButton);
        QCOMPARE(statusOf(*panel), QString("Successfully locked!"));
        panel->close();
        QCOMPARE(list.simulator.openHandles(), 2); // producer and interface
    }
}

// The row is made anew though the same camera stands at the same place.
void PanelCameraTest::resetAndBackWithinAPass()
{
    WindowList list("A B,lock=unlocked,reboot_ms=0");
    QTest::mouseClick(shownButton(list.activate(1), "Factory reset"), Qt::LeftButton);
    QCOMPARE(list.value(1, DeviceItemModel::HasDefaultPasswordRole), QVariant(false));
    list.takeEmitted();
    list.pass();
    QCOMPARE(list.shown(), QString("A B"));
    QCOMPARE(list.takeEmitted(), QString("dataChanged 1..1"));
    QCOMPARE(list.value(1, DeviceItemModel::HasDefaultPasswordRole), QVariant(true));
    list.pass();
    QCOMPARE(list.takeEmitted(), QString());
}

// The eye shows the field in the clear, where undo would show what has been there.
void PanelCameraTest::nothingIsLeftToUndo()
{
    WindowList list("A");
    PasswordWidget *const panel = list.activate(0);
    const FieldParts first(partOf<QWidget>(partOf<QWidget>(panel, 1), 0));
    QTest::mouseClick(shownButton(panel, "Unlock"), Qt::LeftButton);
    QTest::keyClicks(first.edit, "hunter22");
    QTest::keyClick(first.edit, Qt::Key_Return);
    QCOMPARE(statusOf(*panel), QString("Successfully unlocked!"));
    QTest::mouseClick(shownButton(panel, "Change password"), Qt::LeftButton);
    first.edit->actions().first()->trigger();
    for (const auto key : {QKeySequence::Undo, QKeySequence::Redo}) {
        QTest::keySequence(first.edit, key);
        QCOMPARE(first.edit->displayText(), QString());
    }
}

void PanelCameraTest::closedPanelKeepsNoText()
{
    WindowList list("A,lock=unlocked");
    list.simulator.failNth("GCWritePort", -1001, 1, 0, "address = 0x50002000\n");
    list.pass();
    PasswordWidget *const panel = list.activate(0);
    const auto fields = panel->findChildren<PasswordControl *>();
    QTest::mouseClick(shownButton(panel, "Change password"), Qt::LeftButton);
    const auto fill = [&](const QStringList &texts) {
        for (int place = 0; place < fields.size(); ++place)
            FieldParts(fields[place]).type(texts[place]);
        QTest::mouseClick(shownButton(panel, "OK"), Qt::LeftButton);
    };
    fill({"hunter22", "ocean55", "ocean55"});
    fill({"wrong", "ocean56", "ocean56"});
    const auto kept = [&] {
        QString texts;
        for (const PasswordControl *field : fields) {
            texts += field->text() + field->excludePasswordString() + field->comparePasswordString();
            for (const std::string &used : field->usedPasswords())
                texts += QString::fromStdString(used);
        }
        return texts;
    };
    QCOMPARE(kept(), QString("wrongwrongocean56wrongocean55ocean56ocean56"));
    panel->close();
    QCOMPARE(kept(), QString());
}

// From the resting panel and from the dialogue, as the window manager's close does.
void PanelCameraTest::escape()
{
    WindowList list("A");
    for (const char *button : {"", "Unlock"}) {
        PasswordWidget *const panel = list.activate(0);
        QTRY_COMPARE(QApplication::activeWindow(), panel);
        if (QPushButton *const shown = shownButton(panel, button))
            QTest::mouseClick(shown, Qt::LeftButton);
        QCOMPARE(list.simulator.openHandles(), 3);
        QTest::keyClick(panel->windowHandle(), Qt::Key_Escape);
        QVERIFY2(panel->isHidden(), button);
        QCOMPARE(list.simulator.openHandles(), 2);
    }
}

QTEST_MAIN(PanelCameraTest)
#include "PanelCameraTest.moc"
