// SPDX-License-Identifier: MIT
// The painting of a row, pixel by pixel against bare calls of QPainter at the places where everything belongs.
#include "AppFixture.h"
#include "DeviceItemDelegate.h"

#include <QPainter>
#include <QSignalSpy>
#include <QStandardItemModel>

class DelegateTest : public QObject
{
    Q_OBJECT

private slots:
    void row_data();
    void row();
    void sizes();
};

namespace {

const QRect place(30, 20, 520, 64); // away from the corner, so that edges and sizes differ

QImage painted(const std::function<void(QPainter &)> &paint)
{
    QImage image(900, 110, QImage::Format_ARGB32);
    image.fill(Qt::yellow);
    QPainter painter(&image);
    QFont font = painter.font();
    font.setPointSize(11);
    font.setItalic(true); // whatever the view's font is
    painter.setFont(font);
    painter.setPen(Qt::red);
    paint(painter);
    if (painter.font() != font || painter.pen().color() != Qt::red)
        image.fill(Qt::red); // what the painter had is to be there again
    return image;
}

QImage expectedRow(const QStandardItem &item, const QColor &background, const QColor &ink, bool isItalic)
{
    return painted([&](QPainter &painter) {
        painter.save();
        if (background.isValid())
            painter.fillRect(30, 20, 520, 64, background);
        painter.drawPixmap(34, 28, 24, 24, item.data(Qt::DecorationRole).value<QPixmap>());
        QFont font = painter.font();
        font.setItalic(isItalic);
        font.setBold(true);
        painter.setPen(ink);
        painter.setFont(font);
        // Past the right edge, which is at 549.
        painter.drawText(70, 28, 541, 24, Qt::AlignVCenter, item.data(258).toString());
        font.setBold(false);
        painter.setFont(font);
        QRect end;
        painter.drawText(70, 52, 484, 24, Qt::AlignVCenter, "Serial: " + item.data(259).toString(), &end);
        const auto next = [&end] { return QRect(QPoint(end.right() + 16, 52), QPoint(541, 75)); };
        if (const QString ip = item.data(260).toString(); !ip.isEmpty())
            painter.drawText(next(), Qt::AlignVCenter, ip, &end);
        if (const QString mac = item.data(261).toString(); !mac.isEmpty())
            painter.drawText(next(), Qt::AlignVCenter, "MAC: " + mac);
        painter.restore();
    });
}

} // namespace

void DelegateTest::row_data()
{
    const char *const texts = "SimCam G5|G5-0001|192.168.0.11|00:11:22:33:44:01";
    const char *const tooLong =
        "A name that does not end at the edge of the row, nor at any other place that is near to it|"
        "S-0123456789-0123456789-0123456789-0123456789-0123456789|192.168.0.11|00:11:22:33:44:01";
    addRows(
        {"texts", "icon", "flags", "background"},
        {{"all", texts, "lock", "available", ""},
         {"no addresses", "SimCam U3|U3-1||", "", "available", ""},
         {"MAC alone", "SimCam G5|G5-0001||00:11:22:33:44:01", "lock-alert", "available", ""},
         {"IP alone", "SimCam G5|7|10.0.0.1|", "lock-open-variant", "available", ""},
         {"no texts", "|||", "", "available", ""},
         {"too long", tooLong, "", "available", ""},
         {"not room for all", "|S-0123456789-0123456789|192.168.0.11|00:11:22:33:44:01", "", "available", ""},
         {"not available", texts, "lock", "", ""},
         {"not available, open", texts, "lock", "open", ""},
         {"selected", texts, "lock", "available selected", "#f8f8f8"},
         {"hover", texts, "lock", "hover", "#c9e0e2"},
         {"selected, hover", texts, "lock", "available selected hover", "#c9e0e2"}});
}

void DelegateTest::row()
{
    QFETCH(QString, texts);
    QFETCH(QString, icon);
    QFETCH(QString, flags);
    QFETCH(QString, background);
    auto *const item = new QStandardItem;
    int role = DeviceItemModel::ModelNameRole;
    for (const QString &text : texts.split('|'))
        item->setData(text, role++);
    item->setData(QPixmap(":/icons/" + icon + ".png"), Qt::DecorationRole);
    item->setData(flags.contains("available"), DeviceItemModel::IsAvailableRole);
    item->setData(flags.contains("open"), DeviceItemModel::IsOpenRole);
    QStandardItemModel model;
    model.appendRow(item);

    const DeviceItemDelegate delegate(nullptr);
    QStyleOptionViewItem option;
    option.rect = place;
    option.state.setFlag(QStyle::State_Selected, flags.contains("selected"));
    option.state.setFlag(QStyle::State_MouseOver, flags.contains("hover"));
    const QImage image = painted([&](QPainter &painter) { delegate.paint(&painter, option, item->index()); });
    const bool isInactive = !flags.contains("available") && !flags.contains("open");
    QCOMPARE(image, expectedRow(*item, background.isEmpty() ? QColor() : QColor(background),
                                isInactive ? QColor(100, 100, 100) : QColor(0, 0, 0), isInactive));
    QCOMPARE(image.pixelColor(place.topLeft()),
             background.isEmpty() ? QColor(Qt::yellow) : QColor(background));
    QCOMPARE(image.pixelColor(place.bottomRight()), image.pixelColor(place.topLeft()));
}

void DelegateTest::sizes()
{
    DeviceItemDelegate delegate(nullptr);
    QCOMPARE(delegate.sizeHint({}, {}), QSize(200, 64));
    const QStandardItemModel model(2, 1);
    const QSignalSpy spy(&delegate, &DeviceItemDelegate::sizeHintChanged);
    delegate.onSelectedChanged(model.index(1, 0), model.index(0, 0));
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy[0][0].toModelIndex(), model.index(0, 0));
    QCOMPARE(spy[1][0].toModelIndex(), model.index(1, 0));
}

QTEST_MAIN(DelegateTest)
#include "DelegateTest.moc"
