// SPDX-License-Identifier: MIT
#include "DeviceListView.h"

DeviceListView::DeviceListView(QWidget *parent)
{
    setParent(parent);
}

void DeviceListView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    emit currentIndexChanged(current, previous);
    QListView::currentChanged(current, previous);
}
