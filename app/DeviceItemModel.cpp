// SPDX-License-Identifier: MIT
// The model as the view and the panel use it, on the GUI thread.
#include "DeviceItemModel.h"

#include "BackEnd.h"
#include "Device.h"

#include <QIcon>
#include <QMutexLocker>
#include <utility>

namespace {

// In as many pixels as the densest screen shows on 24 by 24 points.
QPixmap iconAtDensity(const QString &path)
{
    return QIcon(path).pixmap(24, 24);
}

} // namespace

DeviceItemModel::DeviceItemModel(QObject *parent, std::shared_ptr<BackEnd> backEnd)
    : QAbstractItemModel(parent),
      backEnd(std::move(backEnd)),
      lockedIcon(iconAtDensity(QStringLiteral(":/icons/lock.png"))),
      unlockedIcon(iconAtDensity(QStringLiteral(":/icons/lock-open-variant.png"))),
      defaultPasswordIcon(iconAtDensity(QStringLiteral(":/icons/lock-alert.png")))
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
    activatedDevice = static_cast<const Device *>(current.internalPointer());
    // The member itself, not a copy: it holds the new index by the time that the signals name it.
    setCurrentIndex(current, currentIndex_);
}

bool DeviceItemModel::openCurrentDevice()
{
    // One copy for all steps: a pass may write the member meanwhile.
    const QModelIndex index = currentIndex_;
    auto *const device = static_cast<Device *>(index.internalPointer());
    const Device *const activated = std::exchange(activatedDevice, nullptr);
    if (!index.isValid() || !device || (activated && device != activated)) {
        // A pass has just found the activated camera gone, or has come between with the one before it. The panel
        // must act on none rather than on another.
        backEnd->selectDevice(nullptr);
        return false;
    }
    closeOpenDevice();
    backEnd->selectDevice(device);
    openDevice = device;
    openFor = nullptr;
    changeRow(index, [&](DeviceRow &row) { row.isOpen = device->isOpen(); });
    emit dataChanged(index, index, {IsOpenRole});
    return true;
}

// A closed panel goes on listening, and closes itself again when it hears of a camera that has gone. By then another
// camera can be open, or the same one for another panel.
void DeviceItemModel::closeCurrentDevice()
{
    if (!sender() || !openFor || sender() == openFor)
        closeOpenDevice();
}

void DeviceItemModel::closeOpenDevice()
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
    const int position = rowOf(index);
    if (position < 0)
        return;
    const SharedRow row = rows.at(position);
    if (row->isLocked == isLocked && row->hasDefaultPassword == hasDefaultPassword)
        return;
    changeRow(index, [&](DeviceRow &changed) {
        changed.isLocked = isLocked;
        changed.hasDefaultPassword = hasDefaultPassword;
    });
    emit currentLockChanged(isLocked);
    emit dataChanged(index, index, {IsLockedRole, HasDefaultPasswordRole});
}

// The row of the device that the index names: where it says, or where a pass has just moved it; -1 when it has gone.
int DeviceItemModel::rowOf(const QModelIndex &index) const
{
    const auto isThere = [&](int row) { return deviceList.at(row) == index.internalPointer(); };
    const int count = deviceList.count();
    if (index.row() < count && isThere(index.row()))
        return index.row();
    int row = 0;
    while (row < count && !isThere(row))
        ++row;
    return row < count ? row : -1;
}

template <class Change>
void DeviceItemModel::changeRow(const QModelIndex &index, Change change)
{
    const QMutexLocker lock(&rowsMutex);
    const int position = rowOf(index);
    if (position < 0)
        return;
    const auto changed = std::make_shared<DeviceRow>(*rows.at(position));
    change(*changed);
    rows.replace(position, changed);
}
