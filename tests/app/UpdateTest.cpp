// SPDX-License-Identifier: MIT
// The passes: rows that come, move and go with the cameras, what is announced of them, and the current row and the open
// camera that follow.
#include "AppFixture.h"
#include "Device.h"

#include <stdexcept>

class UpdateTest : public QObject
{
    Q_OBJECT

private slots:
    void clock();
    void pass_data();
    void pass();
    void openCameraMovesOrGoes();
    void overtakenChoice();
    void cutRowsStayUntilAnnounced();
    void goneCamerasStayForAPass();
    void leavingDuringAPass();
};

void UpdateTest::clock()
{
    const CameraList cameraList(cameras("A"));
    DeviceItemModel model(nullptr, std::make_shared<BackEnd>());
    QVERIFY(!model.index(0, 0).isValid());
    QCOMPARE(model.findChild<QTimer *>()->interval(), 1000);
    QTRY_COMPARE(model.rowCount(), 1);
}

void UpdateTest::pass_data()
{
    addRows({"before", "current", "after", "shown", "newCurrent", "emitted"},
            {{"first", "", "-", "A B", "A B", "-", "dataChanged 0..1"},
             {"added, listed first", "A", "-", "B A", "A B", "-", "dataChanged 1..1"},
             {"replaced by more", "A B", "-", "C D E", "C D E", "-", "dataChanged 0..1, dataChanged 2..2"},
             {"replaced by fewer", "A B C", "-", "D", "D", "-", "dataChanged 0..0"},
             {"interface gone", "A / B / C", "-", "A //C", "A C", "-", "dataChanged 1..1"},
             {"on another interface", "A / B", "-", "/ A B", "B A", "-", "dataChanged 0..1"},
             {"settings of a known camera", "A B", "-", "A B,access=busy", "A B", "-", ""},
             {"current stays", "A B C", "0", "A", "A", "0", ""},
             {"current moves", "A B C D", "2", "B C", "B C", "1",
              "dataChanged 1..1, dataChanged 1..1, selectedChanged 1 from 1, dataChanged 0..1"},
             {"current gone from the middle", "A B C", "1", "A C", "A C", "-",
              "currentDeviceRemoved, selectedChanged - from -, dataChanged 1..1"},
             {"same name, another object, elsewhere", "A B / ", "0", "B / A", "B A", "-",
              "currentDeviceRemoved, selectedChanged - from -, dataChanged 0..1"}});
}

void UpdateTest::pass()
{
    QFETCH(QString, before);
    QFETCH(QString, current);
    QFETCH(QString, after);
    ModelList list(before);
    if (current != "-")
        list.model->setCurrentIndex(list.row(current.toInt()), {});
    list.takeEmitted();
    list.pass(after);
    QTEST(list.shown(), "shown");
    QTEST(list.takeEmitted(), "emitted");
    const QModelIndex index = list.model->currentIndex();
    QTEST(index.isValid() ? QString::number(index.row()) : QString("-"), "newCurrent");
    QCOMPARE(list.row(index.row()), index); // of the same device
    list.pass();
    QCOMPARE(list.takeEmitted(), QString());
}

// The pass has closed it, so that there is nothing left to close, nor to act on, whether its row was still the current
// one or not. It is freed with the second announcement.
void UpdateTest::openCameraMovesOrGoes()
{
    for (const int current : {1, 0}) {
        ModelList list("Z A B");
        list.model->setCurrentIndex(list.row(2), {});
        list.model->openCurrentDevice();
        list.pass("A B");
        QCOMPARE(list.value(1, DeviceItemModel::IsOpenRole), QVariant(true));
        QVERIFY(list.backEnd->lock());
        list.model->setCurrentIndex(list.row(current), {});
        list.pass("A");
        list.pass();
        list.simulator.clearLog();
        list.model->closeCurrentDevice();
        list.model->onCurrentLockChanged();
        QVERIFY(!list.backEnd->lock());
        QVERIFY(list.simulator.calls().empty());
    }
}

// A pass comes between the choice of a row and what follows from it. The camera counts then, not the place.
void UpdateTest::overtakenChoice()
{
    ModelList list("A B,lock=unlocked C");
    DeviceItemModel &model = *list.model;
    const QModelIndex oldPlace = list.row(1);
    list.pass("B,lock=unlocked C");
    model.switchCurrentIndex(oldPlace);
    model.openCurrentDevice();
    QVERIFY(list.backEnd->lock());
    model.onCurrentLockChanged();
    QCOMPARE(list.value(0, DeviceItemModel::IsOpenRole), QVariant(true));
    QCOMPARE(list.value(0, DeviceItemModel::IsLockedRole), QVariant(true));
    QCOMPARE(list.value(1, DeviceItemModel::IsOpenRole), QVariant(false));
    list.pass();
    QCOMPARE(model.currentIndex(), list.row(0));

    // Another camera is current by now: none is acted on.
    model.switchCurrentIndex(list.row(1));
    model.setCurrentIndex(list.row(0), {});
    model.openCurrentDevice();
    QVERIFY(!list.backEnd->lock());
    // The chosen one has gone: nor is the one that was open before it.
    model.openCurrentDevice();
    QVERIFY(list.backEnd->lock());
    model.switchCurrentIndex(list.row(1));
    list.passUnheard("B");
    model.openCurrentDevice();
    QVERIFY(!list.backEnd->lock());
}

void UpdateTest::cutRowsStayUntilAnnounced()
{
    ModelList list("A B C");
    const QModelIndex second = list.row(1);
    const QModelIndex third = list.row(2);
    list.passUnheard("A");
    QCOMPARE(list.model->rowCount(), 1);
    QVERIFY(!list.row(1).isValid());
    QCOMPARE(second.data(DeviceItemModel::SerialNumberRole), QVariant("B"));
    // The next pass puts another camera into one of the two slots.
    list.passUnheard("A D");
    QCOMPARE(second.data(DeviceItemModel::SerialNumberRole), QVariant("D"));
    QCOMPARE(third.data(DeviceItemModel::SerialNumberRole), QVariant("C"));
    QCoreApplication::processEvents();
    QCOMPARE(list.takeEmitted(), QString("dataChanged 1..1"));
    QVERIFY_EXCEPTION_THROWN(third.data(DeviceItemModel::SerialNumberRole), std::out_of_range);
}

// What points to a camera may go on doing so until the announcement of the pass after the one that missed it, and no
// new camera takes its address meanwhile.
void UpdateTest::goneCamerasStayForAPass()
{
    ModelList list("A");
    for (int round = 0; round < 8; ++round) {
        auto *const gone = static_cast<Device *>(list.row(0).internalPointer());
        list.pass(" ");
        QVERIFY(gone->id().empty());
        list.backEnd->selectDevice(gone);
        list.passUnheard("A");
        QVERIFY(list.row(0).internalPointer() != gone);
        QVERIFY(!list.backEnd->selectedIsLocked()); // so answers a camera that is switched off
        QCoreApplication::processEvents();
        QVERIFY(list.backEnd->selectedIsLocked()); // and so no camera
    }
}

// A pass takes longer than a tick, so that ticks wait in a line.
void UpdateTest::leavingDuringAPass()
{
    const CameraList cameraList("[producer]\nupdate_ms = 150\n" + cameras("A / B / C / D / E"));
    const Simulator &simulator = cameraList.simulator;
    auto model = std::make_unique<DeviceItemModel>(nullptr, std::make_shared<BackEnd>());
    const auto passes = [&simulator] { return simulator.calls("TLUpdateInterfaceList").size(); };
    auto *const timer = model->findChild<QTimer *>();
    for (int tick = 0; tick < 20; ++tick)
        QMetaObject::invokeMethod(timer, "timeout");
    QTRY_VERIFY(passes() > 0);
    const std::size_t begun = passes();
    QVERIFY(simulator.calls("IFUpdateDeviceList").size() < 5 * begun);
    model.reset();
    QCOMPARE(passes(), begun);
    QCOMPARE(simulator.calls("IFUpdateDeviceList").size(), 5 * begun);
    QCOMPARE(simulator.openHandles(), 0);
    QCOMPARE(simulator.calls().back(), std::string("GCCloseLib() = 0"));
}

QTEST_MAIN(UpdateTest)
#include "UpdateTest.moc"
