// SPDX-License-Identifier: MIT
// The painting of a row, pixel by pixel against bare calls of QPainter at the places where everything belongs.
#include "AppFixture.h"
#include "DeviceItemDelegate.h"

#include <QPainter>
#include <QStandardItemModel>
#include <functional>

class DelegateTest : public QObject
{
    Q_OBJECT

private slots:
    void row_data();
    void row();
};

namespace {

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

} // namespace

void DelegateTest::row_data()
{
    const char *const texts = "SimCam G5|G5-0001|192.168.0.11|00:11:22:33:44:01";
    const char *const tooLong =
        "A name that does not end at the edge of the row, nor at any other place that is near to it|"
        "S-0123456789-0123456789-0123456789-0123456789-0123456789|192.168.0.11|00:11:22:33:44:01";
    addRows({"texts", "flags", "background"}, {{"all", texts, "available", ""},
                                               {"IP alone", "SimCam G5|7|10.0.0.1|", "available", ""},
                                               {"too long", tooLong, "available", ""},
                                               {"not available", texts, "", ""},
                                               {"not available, open", texts, "open", ""},
                                               {"selected", texts, "available selected", "#f8f8f8"},
                                               {"hover", texts, "available selected hover", "#c9e0e2"}});
}

void DelegateTest::row()
{
    QFETCH(QString, texts);
    QFETCH(QString, flags);
    QFETCH(QString, background);
    const QStringList text = texts.split('|');
    const QPixmap icon(":/icons/lock.png");
    auto *const item = new QStandardItem;
    for (int place = 0; place < text.size(); ++place)
        item->setData(text[place], DeviceItemModel::ModelNameRole + place);
    item->setData(icon, Qt::DecorationRole);
    item->setData(flags.contains("available"), DeviceItemModel::IsAvailableRole);
    item->setData(flags.contains("open"), DeviceItemModel::IsOpenRole);
    QStandardItemModel model;
    model.appendRow(item);
    QStyleOptionViewItem option;
    option.rect = QRect(30, 20, 520, 64); // away from the corner, so that edges and sizes differ
    option.state.setFlag(QStyle::State_Selected, flags.contains("selected"));
    option.state.setFlag(QStyle::State_MouseOver, flags.contains("hover"));
    const QImage image = painted(
        [&](QPainter &painter) { DeviceItemDelegate(nullptr).paint(&painter, option, item->index()); });

    const QImage expected = painted([&](QPainter &painter) {
        painter.save();
        if (!background.isEmpty())
            painter.fillRect(option.rect, QColor(background));
        painter.drawPixmap(34, 28, 24, 24, icon);
        QFont font = painter.font();
        font.setItalic(flags.isEmpty());
        font.setBold(true);
        painter.setFont(font);
        painter.setPen(flags.isEmpty() ? QColor(100, 100, 100) : QColor(0, 0, 0));
        painter.drawText(70, 28, 541, 24, Qt::AlignVCenter, text[0]); // past the right edge, which is at 549
        font.setBold(false);
        painter.setFont(font);
        QRect end;
        painter.drawText(70, 52, 484, 24, Qt::AlignVCenter, "Serial: " + text[1], &end);
        const auto next = [&end] { return QRect(QPoint(end.right() + 16, 52), QPoint(541, 75)); };
        if (!text[2].isEmpty())
            painter.drawText(next(), Qt::AlignVCenter, text[2], &end);
        if (!text[3].isEmpty())
            painter.drawText(next(), Qt::AlignVCenter, "MAC: " + text[3]);
        painter.restore();
    });
    QCOMPARE(image, expected);
    QCOMPARE(DeviceItemDelegate(nullptr).sizeHint(option, item->index()), QSize(200, 64));
}

QTEST_MAIN(DelegateTest)
#include "DelegateTest.moc"
