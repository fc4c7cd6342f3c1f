// SPDX-License-Identifier: MIT
// The model as the view and the panel use it, on the GUI thread.
#include "DeviceItemModel.h"

#include "BackEnd.h"
#include "Device.h"

#include <QMutexLocker>
#include <utility>

DeviceItemModel::DeviceItemModel(QObject *parent, std::shared_ptr<BackEnd> backEnd)
    : QAbstractItemModel(parent),
      backEnd(std::move(backEnd)),
      lockedIcon(QStringLiteral(":/icons/lock.png")),
      unlockedIcon(QStringLiteral(":/icons/lock-open-variant.png")),
      defaultPasswordIcon(QStringLiteral(":/icons/lock-alert.png"))
{
    // dataChanged is also emitted on the update thread; a queued call drops arguments of unknown types.
    qRegisterMetaType<QVector<int>>();
    hasProducers = this->backEnd->discoverLibraries(true);
    startUpdates();
}

QModelIndex DeviceItemModel::index(int row, int column, const QModelIndex &) const
{
    if (row < 0 || row >= deviceList.count())
        return {};
    return createIndex(row, column, deviceList.at(row));
}

QModelIndex DeviceItemModel::parent(const QModelIndex &) const
{
    return {};
}

int DeviceItemModel::rowCount(const QModelIndex &) const
{
    return deviceList.count();
}

int DeviceItemModel::columnCount(const QModelIndex &) const
{
    return 3;
}

QVariant DeviceItemModel::data(const QModelIndex &index, int role) const
{
    const auto row = [&] { return rows.at(index.row()); };
    switch (role) {
    case Qt::DecorationRole:
        return icon(*row());
    case TypeRole:
        return row()->type;
    case ModelNameRole:
        return row()->modelName;
    case SerialNumberRole:
        return row()->serialNumber;
    case IpAddressRole:
        return row()->ipAddress;
    case MacAddressRole:
        return row()->macAddress;
    case IsAvailableRole:
        return row()->isAvailable;
    case IsPasswordProtectedRole:
        return row()->isPasswordProtected;
    case IsOpenRole:
        return row()->isOpen;
    case IsLockedRole:
        return row()->isLocked;
    case HasDefaultPasswordRole:
        return row()->hasDefaultPassword;
    default:
        return {};
    }
}

QVariant DeviceItemModel::icon(const DeviceRow &row) const
{
    if (!row.isPasswordProtected)
        return QPixmap();
    if (row.hasDefaultPassword)
        return defaultPasswordIcon;
    return row.isLocked ? lockedIcon : unlockedIcon;
}

QHash<int, QByteArray> DeviceItemModel::roleNames() const
{
    // SerialNumberRole has no name: it is read by number.
    return {{TypeRole, "type"},
            {ModelNameRole, "modelname"},
            {IpAddressRole, "ipaddress"},
            {MacAddressRole, "macaddress"},
            {IsAvailableRole, "isavailable"},
            {IsPasswordProtectedRole, "ispasswordprotected"},
            {IsOpenRole, "isopen"},
            {IsLockedRole, "islocked"},
            {HasDefaultPasswordRole, "hasdefaultpassword"}};
}

void DeviceItemModel::setCurrentIndex(const QModelIndex &current, const QModelIndex &previous)
{
    if (currentIndex_ == current)
        return;
    currentIndex_ = current;
    const SharedRow row = rows.at(current.row());
    currentId = std::shared_ptr<const QString>(row, &row->id);
    emit dataChanged(previous, previous);
    emit dataChanged(current, current);
    emit selectedChanged(current, previous);
}

void DeviceItemModel::switchCurrentIndex(const QModelIndex &current)
{
    // The member itself, not a copy: it holds the new index by the time that the signals name it.
    setCurrentIndex(current, currentIndex_);
}

void DeviceItemModel::openCurrentDevice()
{
    // One copy for all steps: a pass may clear the member meanwhile.
    const QModelIndex index = currentIndex_;
    auto *const device = static_cast<Device *>(index.internalPointer());
    if (!index.isValid() || !device) {
        // A pass has just found the activated camera gone. The panel must not act on the one before it.
        backEnd->selectDevice(nullptr);
        return;
    }
    closeCurrentDevice();
    backEnd->selectDevice(device);
    openDevice = device;
    changeRow(index.row(), device, [&](DeviceRow &row) { row.isOpen = device->isOpen(); });
    emit dataChanged(index, index, {IsOpenRole});
}

void DeviceItemModel::closeCurrentDevice()
{
    if (Device *const device = openDevice.exchange(nullptr))
        device->close(false);
}

void DeviceItemModel::onCurrentLockChanged()
{
    const QModelIndex index = currentIndex_;
    const auto *const device = static_cast<const Device *>(index.internalPointer());
    if (!index.isValid() || !device)
        return;
    const bool isLocked = device->isLocked();
    const bool hasDefaultPassword = device->isDefaultPassword();
    const SharedRow row = rows.at(index.row());
    if (row->isLocked == isLocked && row->hasDefaultPassword == hasDefaultPassword)
        return;
    changeRow(index.row(), device, [&](DeviceRow &changed) {
        changed.isLocked = isLocked;
        changed.hasDefaultPassword = hasDefaultPassword;
    });
    emit currentLockChanged(isLocked);
    emit dataChanged(index, index, {IsLockedRole, HasDefaultPasswordRole});
}

// Leaves a row alone that a pass has meanwhile given to another device.
template <class Change>
void DeviceItemModel::changeRow(int position, const Device *device, Change change)
{
    const QMutexLocker lock(&rowsMutex);
    const SharedRow row = rows.at(position);
    if (deviceList.at(position) != device)
        return;
    const auto changed = std::make_shared<DeviceRow>(*row);
    change(*changed);
    rows.replace(position, changed);
}
