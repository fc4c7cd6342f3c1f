// SPDX-License-Identifier: MIT
// The passes: rows that come, move and go with the cameras, what is announced of them, and the current row and the open
// camera that follow.
#include "AppFixture.h"
#include "Device.h"

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QIdentityProxyModel>
#include <stdexcept>

class UpdateTest : public QObject
{
    Q_OBJECT

private slots:
    void clock();
    void announcement_data();
    void announcement();
    void currentRow_data();
    void currentRow();
    void questions();
    void openCameraMoves();
    void openCameraGoes();
    void cutRowsStayUntilAnnounced();
    void goneCamerasStayForAPass();
    void leavingDuringAPass();
    void rangesStayWithinTheRows();
};

void UpdateTest::clock()
{
    const CameraList cameraList(cameras("A"));
    QElapsedTimer sinceStart;
    sinceStart.start();
    DeviceItemModel model(nullptr, std::make_shared<BackEnd>());
    QCOMPARE(model.rowCount(), 0);
    QVERIFY(!model.index(0, 0).isValid());
    QTRY_COMPARE(model.rowCount(), 1);
    QVERIFY(sinceStart.elapsed() > 900); // less what a coarse timer may take off
    const auto *timer = model.findChild<QTimer *>();
    QCOMPARE(timer->interval(), 1000);
    QVERIFY(timer->isActive() && !timer->isSingleShot());
    QCOMPARE(timer->timerType(), Qt::CoarseTimer);
}

void UpdateTest::announcement_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QStringList>("emitted");
    const QStringList nothing;
    QTest::newRow("quiet") << "A B"
                           << "A B"
                           << "A B" << nothing;
    QTest::newRow("first") << ""
                           << "A B"
                           << "A B" << QStringList{"dataChanged 0 to 1"};
    QTest::newRow("added") << "A"
                           << "A B C"
                           << "A B C" << QStringList{"dataChanged 1 to 2"};
    QTest::newRow("added, listed first") << "A"
                                         << "B A"
                                         << "A B" << QStringList{"dataChanged 1 to 1"};
    QTest::newRow("last ones gone") << "A B C"
                                    << "A"
                                    << "A" << nothing;
    QTest::newRow("all gone") << "A B C"
                              << ""
                              << "" << nothing;
    QTest::newRow("gone from the middle") << "A B C D"
                                          << "A C D"
                                          << "A C D" << QStringList{"dataChanged 1 to 2"};
    QTest::newRow("last one replaced") << "A B C"
                                       << "A B D"
                                       << "A B D" << QStringList{"dataChanged 2 to 2"};
    QTest::newRow("all replaced by more")
        << "A B"
        << "C D E"
        << "C D E" << QStringList{"dataChanged 0 to 1", "dataChanged 2 to 2"};
    QTest::newRow("all replaced by fewer") << "A B C"
                                           << "D"
                                           << "D" << QStringList{"dataChanged 0 to 0"};
    QTest::newRow("interface gone") << "A / B / C"
                                    << "A / / C"
                                    << "A C" << QStringList{"dataChanged 1 to 1"};
    QTest::newRow("on another interface") << "A / B"
                                          << "/ A B"
                                          << "B A" << QStringList{"dataChanged 0 to 1"};
    QTest::newRow("settings of a known camera") << "A B"
                                                << "A B,access=busy"
                                                << "A B" << nothing;
}

void UpdateTest::announcement()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    ModelList list(before);
    list.plug(after);
    list.pass();
    QTEST(list.shown(), "shown");
    QTEST(list.takeEmitted(), "emitted");
    list.pass();
    QCOMPARE(list.takeEmitted(), QStringList());
}

void UpdateTest::currentRow_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("after");
    QTest::addColumn<int>("newRow");
    QTest::addColumn<QStringList>("emitted");
    const QStringList gone{"currentDeviceRemoved", "selectedChanged none from none"};
    QTest::newRow("others cut") << "A B C" << 0 << "A" << 0 << QStringList{};
    QTest::newRow("others before and behind it")
        << "A B C D" << 2 << "B C" << 1
        << QStringList{"dataChanged 1 to 1", "dataChanged 1 to 1", "selectedChanged 1 from 1",
                       "dataChanged 0 to 1"};
    QTest::newRow("shifted, others added") << "A B" << 1 << "B C" << 0
                                           << QStringList{"dataChanged 0 to 0", "dataChanged 0 to 0",
                                                          "selectedChanged 0 from 0", "dataChanged 0 to 1"};
    QTest::newRow("gone from the end") << "A B" << 1 << "A" << -1 << gone;
    QTest::newRow("gone with all") << "A B" << 0 << "" << -1 << gone;
    QTest::newRow("gone from the middle")
        << "A B C" << 1 << "A C" << -1 << gone + QStringList{"dataChanged 1 to 1"};
    QTest::newRow("another object at its row, of the same name")
        << "A / " << 0 << " / A" << -1 << gone + QStringList{"dataChanged 0 to 0"};
    QTest::newRow("another object elsewhere, of the same name")
        << "A B / " << 0 << "B / A" << -1 << gone + QStringList{"dataChanged 0 to 1"};
}

void UpdateTest::currentRow()
{
    QFETCH(QString, before);
    QFETCH(int, row);
    QFETCH(QString, after);
    QFETCH(int, newRow);
    ModelList list(before);
    list.model->setCurrentIndex(list.row(row), {});
    list.takeEmitted();
    const QString device = list.value(row, DeviceItemModel::SerialNumberRole).toString();
    list.plug(after);
    list.pass();
    QTEST(list.takeEmitted(), "emitted");
    QCOMPARE(list.model->currentIndex(), list.row(newRow));
    if (newRow >= 0)
        QCOMPARE(list.value(newRow, DeviceItemModel::SerialNumberRole).toString(), device);
    list.pass();
    QCOMPARE(list.takeEmitted(), QStringList());
}

// A pass asks a new camera alone, and its row in a fixed order: access, model, serial number.
void UpdateTest::questions()
{
    ModelList list("A");
    list.plug("A B");
    list.simulator.clearLog();
    list.pass();
    std::vector<std::string> asked;
    for (const std::string &call : list.simulator.calls("IFGetDeviceInfo"))
        asked.push_back(call.substr(call.find(',') + 2, call.find(')') - call.find(',') - 2));
    const std::vector<std::string> ofProbeAndRow{"\"B\", 5", "\"B\", 5", "\"B\", 2", "\"B\", 7"};
    QCOMPARE(asked, ofProbeAndRow);
    list.simulator.clearLog();
    list.pass();
    for (int role = 0; role < 300; ++role)
        list.value(1, role);
    for (const std::string &call : list.simulator.calls())
        QVERIFY2(call.starts_with("TL") || call.starts_with("IF"), call.c_str());
    QVERIFY(list.simulator.calls("IFGetDeviceInfo").empty());
}

void UpdateTest::openCameraMoves()
{
    ModelList list("A B");
    list.model->setCurrentIndex(list.row(1), {});
    list.model->openCurrentDevice();
    list.plug("B");
    list.pass();
    QVERIFY(list.simulator.calls("DevClose").size() == 2); // those of the probes
    QCOMPARE(list.value(0, DeviceItemModel::IsOpenRole), QVariant(true));
    list.model->closeCurrentDevice();
    QVERIFY(list.simulator.calls("DevClose").size() == 3);
}

// The pass has closed it, so that there is nothing left to close, nor to act on.
void UpdateTest::openCameraGoes()
{
    ModelList list("A B");
    list.model->setCurrentIndex(list.row(1), {});
    list.model->openCurrentDevice();
    list.plug("A");
    list.pass();
    list.simulator.clearLog();
    list.model->closeCurrentDevice();
    list.model->onCurrentLockChanged();
    list.model->openCurrentDevice();
    QCOMPARE(list.backEnd->lock(), false);
    QVERIFY(list.simulator.calls().empty());
}

void UpdateTest::cutRowsStayUntilAnnounced()
{
    ModelList list("A B C");
    const QModelIndex second = list.row(1);
    const QModelIndex third = list.row(2);
    list.plug("A");
    list.passUnheard();
    QCOMPARE(list.model->rowCount(), 1);
    QVERIFY(!list.row(1).isValid());
    QCOMPARE(second.data(DeviceItemModel::SerialNumberRole), QVariant("B"));
    // The next pass puts another camera into one of the two slots.
    list.plug("A D");
    list.passUnheard();
    QCOMPARE(second.data(DeviceItemModel::SerialNumberRole), QVariant("D"));
    QCOMPARE(third.data(DeviceItemModel::SerialNumberRole), QVariant("C"));
    QCoreApplication::processEvents();
    QCOMPARE(list.takeEmitted(), QStringList{"dataChanged 1 to 1"});
    QVERIFY_EXCEPTION_THROWN(third.data(DeviceItemModel::SerialNumberRole), std::out_of_range);
}

// What points to a camera may go on doing so until the announcement of the pass after the one that missed it, and no
// new camera takes its address meanwhile.
void UpdateTest::goneCamerasStayForAPass()
{
    ModelList list("A");
    for (int round = 0; round < 8; ++round) {
        const auto *const gone = static_cast<const Device *>(list.row(0).internalPointer());
        QVERIFY(!gone->id().empty());
        list.plug("");
        list.pass();
        QVERIFY(gone->id().empty());
        list.plug("A");
        list.passUnheard();
        QVERIFY(gone->id().empty());
        QVERIFY(list.row(0).internalPointer() != gone);
        QCoreApplication::processEvents();
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

// The rows as the flat list that they are. To the tester each row of the model itself is the parent of all rows, since
// index and rowCount ignore their parent: there it holds only as long as there is no row.
class FlatModel : public QIdentityProxyModel
{
public:
    int rowCount(const QModelIndex &parent) const override
    {
        return parent.isValid() ? 0 : QIdentityProxyModel::rowCount(parent);
    }
    bool hasChildren(const QModelIndex &parent) const override
    {
        return !parent.isValid() && rowCount(parent) > 0;
    }
    QModelIndex index(int row, int column, const QModelIndex &parent) const override
    {
        return parent.isValid() ? QModelIndex() : QIdentityProxyModel::index(row, column, parent);
    }
};

void UpdateTest::rangesStayWithinTheRows()
{
    ModelList list("");
    {
        const QAbstractItemModelTester tester(list.model,
                                              QAbstractItemModelTester::FailureReportingMode::QtTest);
        list.pass();
    }
    FlatModel flat;
    flat.setSourceModel(list.model);
    const QAbstractItemModelTester flatTester(&flat, QAbstractItemModelTester::FailureReportingMode::QtTest);
    for (const char *plan : {"A B C D E", "A C E", "C E F / G", "/ G H", "A / B", ""}) {
        list.plug(plan);
        list.pass();
    }
    QVERIFY(!QTest::currentTestFailed());
}

QTEST_MAIN(UpdateTest)
#include "UpdateTest.moc"
