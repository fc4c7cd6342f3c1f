// SPDX-License-Identifier: MIT
// The rows as the view reads them, the current row, and the camera that is open for the panel.
#include "AppFixture.h"
#include "Device.h"
#include "SlotSequence.h"

#include <stdexcept>

class ModelTest : public QObject
{
    Q_OBJECT

private slots:
    void slotSequence();
    void indexes();
    void rowOfCamera_data();
    void rowOfCamera();
    void openCamera();
    void lockChange();
};

// Counts around the borders of the chunks.
void ModelTest::slotSequence()
{
    for (const int count : {64, 65, 129, 1000}) {
        SlotSequence<std::shared_ptr<int>> sequence;
        for (int value = 0; value < count; ++value)
            sequence.append(std::make_shared<int>(value));
        for (int position = 0; position < count; ++position)
            QCOMPARE(*sequence.at(position), position);
        for (const int outside : {-1, count})
            QVERIFY_EXCEPTION_THROWN(sequence.at(outside), std::out_of_range);

        const std::weak_ptr<int> last = sequence.at(count - 1);
        sequence.cut(count - 1);
        sequence.release(0); // the announcement of a pass before the cut
        QCOMPARE(sequence.at(count - 1), last.lock());
        sequence.release(sequence.cuts());
        QVERIFY(last.expired());
        QVERIFY_EXCEPTION_THROWN(sequence.at(count - 1), std::out_of_range);
    }
}

void ModelTest::indexes()
{
    ModelList list("A B,access=busy");
    const DeviceItemModel &model = *list.model;
    QCOMPARE(model.columnCount(), 3);
    const QModelIndex index = model.index(1, 7, list.row(0));
    QCOMPARE(index.column(), 7);
    QCOMPARE(index.internalPointer(), list.backEnd->devices().at(1));
    QVERIFY(!index.parent().isValid());
    for (const int outside : {-1, 2})
        QVERIFY(!model.index(outside, 0).isValid());
    QVERIFY(!model.data({}, Qt::DisplayRole).isValid());
    QVERIFY_EXCEPTION_THROWN(model.data({}, DeviceItemModel::IsLockedRole), std::out_of_range);
}

void ModelTest::rowOfCamera_data()
{
    const char *const texts = "Unknown|SimCam|A|192.168.0.10|00:11:22:33:44:55";
    const char *const noAddresses = "Unknown|SimCam|A||";
    addRows({"settings", "texts", "flags", "icon"},
            {{"unlocked", ",lock=unlocked", texts, "available protected", "lock-open-variant"},
             {"default, locked", ",lock=default", texts, "available protected locked default", "lock-alert"},
             {"without a lock", ",lock=none", texts, "available", ""},
             {"read-only", ",access=readonly", texts, "protected locked", "lock"},
             {"busy", ",access=busy", noAddresses, "", ""},
             {"USB", ",type=U3V,lock=default", noAddresses, "available locked default", ""},
             {"highest addresses, UTF-8", ",model=K\u00e4mera\u2122,ip=255.254.1.0,mac=FE:DC:BA:98:76:04",
              "Unknown|K\u00e4mera\u2122|A|255.254.1.0|fe:dc:ba:98:76:04", "available protected locked",
              "lock"}});
}

void ModelTest::rowOfCamera()
{
    QFETCH(QString, settings);
    QFETCH(QString, icon);
    const ModelList list("A" + settings);
    QStringList texts;
    for (const int role : {257, 258, 259, 260, 261})
        texts << list.value(0, role).toString();
    QTEST(texts.join('|'), "texts");

    QStringList flags;
    for (const int role : {262, 263, 264, 265, 266}) {
        QCOMPARE(list.value(0, role).type(), QVariant::Bool);
        if (list.value(0, role).toBool())
            flags << QStringList{"available", "protected", "open", "locked", "default"}[role - 262];
    }
    QTEST(flags.join(' '), "flags");

    const auto pixmap = list.value(0, Qt::DecorationRole).value<QPixmap>();
    QCOMPARE(pixmap.isNull(), icon.isEmpty());
    QCOMPARE(pixmap.toImage(), QPixmap(":/icons/" + icon + ".png").toImage());
}

void ModelTest::openCamera()
{
    ModelList list("A B C,access=readonly");
    DeviceItemModel &model = *list.model;
    const auto isOpen = [&](int row) { return list.backEnd->devices().at(std::size_t(row))->isOpen(); };
    const auto showsOpen = [&](int row) { return list.value(row, DeviceItemModel::IsOpenRole).toBool(); };
    model.openCurrentDevice(); // none
    model.closeCurrentDevice();
    QCOMPARE(list.takeEmitted(), QString(""));
    model.setCurrentIndex(list.row(0), {});
    model.openCurrentDevice();
    QVERIFY(isOpen(0) && showsOpen(0));
    model.switchCurrentIndex(list.row(1));
    model.openCurrentDevice();
    QVERIFY(!isOpen(0) && isOpen(1) && showsOpen(1));
    // The row of a camera that was open once goes on showing it.
    model.closeCurrentDevice();
    QVERIFY(!isOpen(1) && showsOpen(0) && showsOpen(1));

    model.switchCurrentIndex(list.row(2));
    list.takeEmitted();
    model.openCurrentDevice();
    QCOMPARE(list.takeEmitted(), QString("dataChanged 2..2 role 264"));
    QVERIFY(!showsOpen(2));
}

// The default password alone is a change.
void ModelTest::lockChange()
{
    ModelList list("A,lock=default");
    DeviceItemModel &model = *list.model;
    model.onCurrentLockChanged();
    model.setCurrentIndex(list.row(0), {});
    model.openCurrentDevice();
    list.takeEmitted();
    model.onCurrentLockChanged();
    QCOMPARE(list.takeEmitted(), QString(""));
    list.backEnd->changePassword("mapleoak", "otherword");
    list.backEnd->lock();
    model.onCurrentLockChanged();
    QCOMPARE(list.takeEmitted(), QString("currentLockChanged 1, dataChanged 0..0 role 265 role 266"));
    QCOMPARE(list.value(0, DeviceItemModel::IsLockedRole), QVariant(true));
    QCOMPARE(list.value(0, DeviceItemModel::HasDefaultPasswordRole), QVariant(false));
}

QTEST_MAIN(ModelTest)
#include "ModelTest.moc"
