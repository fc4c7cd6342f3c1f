// SPDX-License-Identifier: MIT
// The window on real widgets: what it is made of, how its list follows the cameras and the user, and the way from a row
// to the panel.
#include "WindowList.h"

#include <QScrollBar>

class WindowTest : public QObject
{
    Q_OBJECT

private slots:
    void aboutQt();
    void withoutProducer();
    void newCurrentRow();
    void overtakenAnnouncement();
    void rowsComeAndGo();
    void unlocking();
    void cameraWithoutALock();
    void panelsPileUp();
    void returnOnAGoneRow();
    void cameraThatCannotBeOpened();
    void lateGoodbye();
    void resetAndBackWithinAPass();
};

namespace {

QString manyCameras(int count)
{
    QString plan;
    for (int number = 0; number < count; ++number)
        plan += QString("C%1 ").arg(number);
    return plan;
}

QString statusOf(const PasswordWidget &panel)
{
    return partOf<QLabel>(&panel, 3)->text();
}

} // namespace

void WindowTest::aboutQt()
{
    WindowList list("A");
    auto *const label = list.window.findChild<QLabel *>("aboutQt");
    QTest::mouseClick(label, Qt::LeftButton, {}, label->rect().center());
    QCOMPARE(list.boxes.taken(), QStringList{"About Qt of MainWindow"});

    list.window.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &list.window);
    QCOMPARE(QApplication::focusWidget(), &list.view);
    QWindow *const window = list.window.windowHandle();
    for (const auto key : {Qt::Key_Tab, Qt::Key_Return})
        QTest::keyClick(window, key);
    QCOMPARE(list.boxes.taken(), QStringList{"About Qt of MainWindow"});
    list.window.activateWindow(); // the offscreen platform leaves none active behind a box
    QTRY_COMPARE(QApplication::activeWindow(), &list.window);
    QTest::keyClick(window, Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), &list.view);
}

void WindowTest::withoutProducer()
{
    const CameraList list(cameras("A"));
    const Environment nowhere("GENICAM_GENTL64_PATH", list.simulator.folder().string());
    MessageBoxes boxes;
    MainWindow window;
    QCOMPARE(boxes.taken(),
             QStringList{"Could not open any CTI. Please make sure that the *.cti file is located "
                         "in the same folder as your application and restart the application."});
    window.show();
    QTRY_VERIFY_WITH_TIMEOUT(window.isHidden(), 3500);
}

// Listeners of the view in their order: delegate, then model, then the view itself, which scrolls there.
void WindowTest::newCurrentRow()
{
    WindowList list(manyCameras(20));
    connect(list.view.itemDelegate(), &QAbstractItemDelegate::sizeHintChanged, this,
            [&](const QModelIndex &index) {
                list.emitted << QString("sizeHintChanged %1, scrolled %2")
                                    .arg(index.row())
                                    .arg(list.view.verticalScrollBar()->value() > 0);
            });
    list.view.setCurrentIndex(list.row(0));
    list.takeEmitted();
    QTest::keyClick(&list.view, Qt::Key_End);
    QCOMPARE(list.takeEmitted(), QString("sizeHintChanged 0, scrolled 0, sizeHintChanged 19, scrolled 0, "
                                         "dataChanged 0..0, dataChanged 19..19, selectedChanged 19 from 0"));
    QVERIFY(list.view.verticalScrollBar()->value() > 0);
    QTest::mouseClick(list.view.viewport(), Qt::LeftButton, {}, list.place(18).center());
    QCOMPARE(list.takeEmitted().section(", ", -1), QString("selectedChanged 18 from 19"));
    QTest::keyClick(&list.view, Qt::Key_Home, Qt::ShiftModifier);
    QCOMPARE(list.view.selectionModel()->selectedIndexes().size(), 1);
}

// The user chooses another row before the view hears what a pass has done to the current one.
void WindowTest::overtakenAnnouncement()
{
    WindowList list("B A C");
    const auto choose = [&](int position) { list.view.setCurrentIndex(list.row(position)); };
    choose(1);
    list.passUnheard("A C"); // moves it
    choose(1);
    QCoreApplication::processEvents();
    QCOMPARE(list.view.currentIndex(), list.row(1));
    QCOMPARE(list.model->currentIndex(), list.row(1));
    list.passUnheard("A"); // cuts it
    choose(0);
    QCoreApplication::processEvents();
    QCOMPARE(list.view.currentIndex(), list.row(0));
    QCOMPARE(list.model->currentIndex(), list.row(0));
}

// The view keeps its place in the rows, whose number changes without a signal.
void WindowTest::rowsComeAndGo()
{
    WindowList list(manyCameras(20));
    QListView &view = list.view;
    QScrollBar &bar = *view.verticalScrollBar();
    const auto isCurrent = [&view](const QModelIndex &index) {
        return view.currentIndex() == index &&
               view.selectionModel()->selectedIndexes() == QModelIndexList{index};
    };
    view.setCurrentIndex(list.row(10));
    view.scrollTo(list.row(11), QAbstractItemView::PositionAtTop);
    const int scrolled = bar.value();
    const int range = bar.maximum();
    QVERIFY(scrolled > 0);
    for (const int count : {25, 18}) {
        list.pass(manyCameras(count));
        QCOMPARE(bar.maximum(), range + count - 20);
        QCOMPARE(bar.value(), scrolled);
        QVERIFY(isCurrent(list.row(10)));
    }
    list.pass("C9 C10 C11");
    QCOMPARE(bar.maximum(), 0);
    QVERIFY(isCurrent(list.row(1)));
    list.pass("C9");
    QVERIFY(!view.currentIndex().isValid() && !view.selectionModel()->hasSelection());

    // The view drops a gone row that the model has not heard of, too.
    {
        const QSignalBlocker unheard(view);
        view.setCurrentIndex(list.row(0));
    }
    list.pass("");
    QVERIFY(!view.currentIndex().isValid());
}

// From the row to the panel, and back into the row.
void WindowTest::unlocking()
{
    WindowList list("A B");
    QList<int> cursors;
    connect(list.model, &DeviceItemModel::dataChanged, this, [&] {
        cursors << (QGuiApplication::overrideCursor() ? QGuiApplication::overrideCursor()->shape() : -1);
    });
    list.doubleClick(1);
    QCOMPARE(cursors.last(), int(Qt::WaitCursor));
    QVERIFY(!QGuiApplication::overrideCursor());
    QCOMPARE(list.panels().size(), 1);
    PasswordWidget *const panel = list.panels().first();
    QVERIFY(panel->isVisible() && panel->parent() == &list.window);

    QTest::mouseClick(shownButton(panel, "Unlock"), Qt::LeftButton);
    QTest::keyClicks(panel->findChild<QLineEdit *>(), "hunter22");
    list.takeEmitted();
    QTest::mouseClick(shownButton(panel, "OK"), Qt::LeftButton);
    QCOMPARE(list.takeEmitted(), QString("currentLockChanged 0, dataChanged 1..1 role 265 role 266"));
    QCOMPARE(list.value(1, DeviceItemModel::IsLockedRole), QVariant(false));
    QCOMPARE(list.simulator.openHandles(), 3); // producer, interface, camera
    panel->close();
    QCOMPARE(list.simulator.openHandles(), 2);
    QVERIFY(list.boxes.taken().isEmpty());
}

void WindowTest::cameraWithoutALock()
{
    const QStringList message{"This camera is not password protected."};
    WindowList list("A N,lock=none B");
    list.doubleClick(1);
    QCOMPARE(list.boxes.taken(), message);
    list.doubleClick(0);
    list.simulator.clearLog();
    const auto activate = [&](int position) {
        QMetaObject::invokeMethod(&list.window, "onCameraActivated", Q_ARG(QModelIndex, list.row(position)));
    };
    activate(1);
    QCOMPARE(list.boxes.taken(), message);
    QCOMPARE(list.model->currentIndex(), list.row(0));
    QVERIFY(list.simulator.calls().empty());
    QCOMPARE(list.panels().size(), 1);
    activate(2);
    QCOMPARE(list.model->currentIndex(), list.row(2));
}

// Each activation makes a panel, and closed ones go on listening.
void WindowTest::panelsPileUp()
{
    WindowList list("A,lock=unlocked");
    for (int count = 1; count <= 3; ++count) {
        PasswordWidget *const panel = list.activate(0);
        QCOMPARE(list.panels().size(), count);
        QVERIFY(shownButton(panel, "Lock")); // the state of the open camera
        if (count < 3)
            panel->close();
    }
    list.pass(" ");
    const QString removed = "The camera has been removed...";
    QCOMPARE(list.boxes.taken(), (QStringList{removed, removed, removed}));
    QVERIFY(!list.panels().last()->isVisible());
    QCOMPARE(list.simulator.openHandles(), 2);
}

// Cut, another camera's by now, moved, and all gone.
void WindowTest::returnOnAGoneRow()
{
    for (const char *after : {"A", "A C", "B", ""}) {
        WindowList list("A B");
        list.view.setCurrentIndex(list.row(1));
        list.passUnheard(after);
        list.simulator.clearLog();
        QTest::keyClick(&list.view, Qt::Key_Return);
        QVERIFY2(list.panels().isEmpty() && list.boxes.taken().isEmpty(), after);
        QVERIFY2(list.simulator.calls().empty(), after);
    }
}
// Another program has taken the camera since its row was made.
void WindowTest::cameraThatCannotBeOpened()
{
    for (const QString &lock : {QString("unlocked"), QString("default")}) {
        WindowList list("A,lock=" + lock);
        list.simulator.failNth("IFOpenDevice", -1005, 1, 0);
        list.pass();
        list.simulator.clearLog();
        const PasswordWidget *const panel = list.activate(0);
        QCOMPARE(list.simulator.calls("IFOpenDevice").size(), 1U);
        QCOMPARE(statusOf(*panel),
                 QString("The camera could not be opened. Another program may be using it."));
        for (const char *label :
             {lock == "unlocked" ? "Lock" : "Unlock", "Change password", "Factory reset"}) {
            QPushButton *const button = shownButton(panel, label);
            QVERIFY2(button && !button->isEnabled(), label);
        }
        QVERIFY(!partOf<QWidget>(panel, 1)->isVisible()); // nor is the change forced
    }
}

// The panel of a camera that was closed long ago closes itself once more when another camera has gone. The one that is
// open by then is not its own, nor is its own camera when that is open for another panel.
void WindowTest::lateGoodbye()
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
void WindowTest::resetAndBackWithinAPass()
{
    WindowList list("A B,lock=unlocked,reboot_ms=0");
    QTest::mouseClick(shownButton(list.activate(1), "Factory reset"), Qt::LeftButton);
    QCOMPARE(list.value(1, DeviceItemModel::HasDefaultPasswordRole), QVariant(false));
    list.takeEmitted();
    list.pass();
    QCOMPARE(list.takeEmitted(), QString("dataChanged 1..1"));
    QCOMPARE(list.value(1, DeviceItemModel::HasDefaultPasswordRole), QVariant(true));
    list.pass();
    QCOMPARE(list.takeEmitted(), QString());
}

QTEST_MAIN(WindowTest)
#include "WindowTest.moc"
