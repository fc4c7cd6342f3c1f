// SPDX-License-Identifier: MIT
#include "DeviceItemDelegate.h"

#include "DeviceItemModel.h"

#include <QPainter>
#include <QPixmap>

namespace {

struct Texts
{
    QString modelName;
    QString serialNumber;
    QString ipAddress;
    QString macAddress;
};

// The second line. Each text begins 16 pixels behind the end of the one before it.
void drawDetails(QPainter &painter, const QRect &r, const Texts &texts)
{
    const auto behind = [&r](const QRect &box) {
        return QRect(QPoint(box.right() + 16, r.top() + 32), QPoint(r.right() - 8, r.bottom() - 8));
    };
    QRect box(0, 0, 0, 0);
    painter.drawText(r.left() + 40, r.top() + 32, r.width() - 36, 24, Qt::AlignVCenter,
                     QStringLiteral("Serial: ") + texts.serialNumber, &box);
    if (!texts.ipAddress.isEmpty())
        painter.drawText(behind(box), Qt::AlignVCenter, texts.ipAddress, &box);
    if (!texts.macAddress.isEmpty())
        painter.drawText(behind(box), Qt::AlignVCenter, QStringLiteral("MAC: ") + texts.macAddress);
}

} // namespace

DeviceItemDelegate::DeviceItemDelegate(QObject *parent) : QStyledItemDelegate(parent) {}

void DeviceItemDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                               const QModelIndex &index) const
{
    const QAbstractItemModel *const model = index.model();
    const auto value = [&](int role) { return model->data(index, role); };
    const Texts texts{
        value(DeviceItemModel::ModelNameRole).toString(), value(DeviceItemModel::SerialNumberRole).toString(),
        value(DeviceItemModel::IpAddressRole).toString(), value(DeviceItemModel::MacAddressRole).toString()};
    const bool isAvailable = value(DeviceItemModel::IsAvailableRole).toBool();
    const bool isOpen = value(DeviceItemModel::IsOpenRole).toBool();
    // Read and dropped: the state of the lock is in the icon.
    value(DeviceItemModel::IsPasswordProtectedRole);
    value(DeviceItemModel::IsLockedRole);
    value(DeviceItemModel::HasDefaultPasswordRole);

    const QStyleOptionViewItem row = option;
    const QRect r = row.rect;
    painter->save();
    if (row.state & QStyle::State_Selected)
        painter->fillRect(r, selectedColor);
    if (row.state & QStyle::State_MouseOver)
        painter->fillRect(r, hoverColor);

    QFont font = painter->font();
    const bool isInactive = !isAvailable && !isOpen;
    font.setStyle(isInactive ? QFont::StyleItalic : QFont::StyleNormal);
    painter->setPen(isInactive ? inactiveColor : activeColor);

    painter->setRenderHint(QPainter::SmoothPixmapTransform); // on a screen of another density than the icon's
    painter->drawPixmap(r.left() + 4, r.top() + 8, 24, 24, value(Qt::DecorationRole).value<QPixmap>());

    font.setWeight(QFont::Bold);
    painter->setFont(font);
    // The width counts from the row's right edge, so the box runs past it.
    painter->drawText(r.left() + 40, r.top() + 8, r.right() - 8, 24, Qt::AlignVCenter, texts.modelName);

    font.setWeight(QFont::Normal);
    painter->setFont(font);
    drawDetails(*painter, r, texts);
    painter->restore();
}

QSize DeviceItemDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    return {200, 64};
}

void DeviceItemDelegate::onSelectedChanged(const QModelIndex &current, const QModelIndex &previous)
{
    selectedIndex = current;
    emit sizeHintChanged(previous);
    emit sizeHintChanged(current);
}
