// SPDX-License-Identifier: MIT
// Draws one camera of the list: the lock's icon, the model name in bold, and below it serial number and addresses,
// one behind the other. All of it comes from the model's roles, so a paint never reaches a camera.
#pragma once

#include <QColor>
#include <QModelIndex>
#include <QStyledItemDelegate>

class DeviceItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit DeviceItemDelegate(QObject *parent);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

public slots:
    /// Makes the view lay out both rows anew.
    void onSelectedChanged(const QModelIndex &current, const QModelIndex &previous);

private:
    QModelIndex selectedIndex; // the last one told; the drawing does not depend on it
    QColor selectedColor{248, 248, 248, 255};
    QColor inactiveColor{100, 100, 100, 255};
    QColor activeColor{0, 0, 0, 255};
    QColor hoverColor{201, 224, 226, 255};
};
