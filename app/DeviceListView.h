// SPDX-License-Identifier: MIT
// The list of cameras: a list view that tells of each new current row before it acts on it, so that delegate and
// model have followed when the view scrolls and paints.
#pragma once

#include <QListView>

class DeviceListView : public QListView
{
    Q_OBJECT

public:
    explicit DeviceListView(QWidget *parent);

signals:
    void currentIndexChanged(const QModelIndex &current, const QModelIndex &previous);

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
};
