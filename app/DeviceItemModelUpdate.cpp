// SPDX-License-Identifier: MIT
// Keeping the rows in step with the back end: the update thread, its pass, and the announcement of what a pass has
// changed on the GUI thread.
#include "BackEnd.h"
#include "Device.h"
#include "DeviceItemModel.h"
#include "UpdateWorker.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QMutexLocker>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace {

constexpr int updateIntervalMs = 1000;

} // namespace

void DeviceItemModel::startUpdates()
{
    updateThread = new QThread(this);
    worker = new UpdateWorker(this);
    worker->moveToThread(updateThread);
    connect(updateThread, &QThread::finished, worker, &QObject::deleteLater);
    connect(worker, &UpdateWorker::updateDone, this, &DeviceItemModel::sendDataChangedSignal);
    updateThread->start(QThread::InheritPriority);
    auto *const timer = new QTimer(this);
    connect(timer, &QTimer::timeout, worker, &UpdateWorker::doUpdate);
    timer->start(updateIntervalMs);
}

DeviceItemModel::~DeviceItemModel()
{
    // Passes that take longer than a tick leave a line of ticks behind.
    QCoreApplication::removePostedEvents(worker);
    updateThread->quit();
    updateThread->wait(QDeadlineTimer(QDeadlineTimer::Forever));
}

void DeviceItemModel::updateRows()
{
    std::vector<Device *> fresh;
    {
        const QMutexLocker lock(&backEndMutex);
        backEnd->updateDevices();
        fresh = backEnd->devices();
    }
    const int count = static_cast<int>(fresh.size());
    const int common = std::min(count, deviceList.count());
    replaceRows(fresh, common);
    if (count > deviceList.count())
        addRows(fresh, common);
    else if (count < deviceList.count())
        cutRows(common);
    followCurrentDevice();

    PassEnd end{backEnd->takeRetired(), rows.cuts()};
    const QMutexLocker lock(&pendingMutex);
    pendingPasses.push_back(std::move(end));
}

// A device that stays where it was is not looked at again, unless it was probed again: it had left the list and come back
// between two passes, as after a factory reset.
void DeviceItemModel::replaceRows(const std::vector<Device *> &fresh, int common)
{
    std::vector<int> changed;
    for (int position = 0; position < common; ++position) {
        const auto place = static_cast<std::size_t>(position);
        if (fresh[place] != deviceList.at(position) || fresh[place]->probes() != rowProbes[place])
            changed.push_back(position);
    }
    for (const int position : changed) {
        Device *const device = fresh[static_cast<std::size_t>(position)];
        const SharedRow row = makeRow(*device);
        rowProbes[static_cast<std::size_t>(position)] = device->probes();
        const QMutexLocker lock(&rowsMutex);
        deviceList.replace(position, device);
        rows.replace(position, row);
    }
    if (!changed.empty())
        storeChange(changed.front(), changed.back());
}

void DeviceItemModel::addRows(const std::vector<Device *> &fresh, int common)
{
    const int count = static_cast<int>(fresh.size());
    for (int position = common; position < count; ++position) {
        Device *const device = fresh[static_cast<std::size_t>(position)];
        const SharedRow row = makeRow(*device);
        rowProbes.push_back(device->probes());
        const QMutexLocker lock(&rowsMutex);
        // The row first: the number of devices is the one that the view asks for.
        rows.append(row);
        deviceList.append(device);
    }
    storeChange(common, count - 1);
}

// Nothing is stored for the announcement: that the number of rows has dropped is all that there is to see.
void DeviceItemModel::cutRows(int common)
{
    rowProbes.resize(static_cast<std::size_t>(common));
    const QMutexLocker lock(&rowsMutex);
    deviceList.cut(common);
    rows.cut(common);
}

// A camera that has been away comes back as another object under its old identifier, and is not the one that was
// current: the object decides, which keeps its identifier.
void DeviceItemModel::followCurrentDevice()
{
    const QModelIndex current = currentIndex_;
    const std::shared_ptr<const QString> id = currentId;
    if (!current.isValid())
        return;
    const int position = rowOf(current);
    if (position == current.row())
        return;
    if (currentIndex_ != current || currentId.load() != id)
        return; // the user has just chosen another row, which the next pass follows
    if (position >= 0) {
        setCurrentIndex(index(position, 0), currentIndex_);
        return;
    }
    currentIndex_ = QModelIndex();
    currentId.store(nullptr);
    auto *gone = static_cast<Device *>(current.internalPointer());
    openDevice.compare_exchange_strong(gone, nullptr);
    emit currentDeviceRemoved();
    emit selectedChanged(QModelIndex(), QModelIndex());
}

void DeviceItemModel::storeChange(int first, int last)
{
    const QModelIndex topLeft = index(first, 0);
    const QModelIndex bottomRight = index(last, 0);
    const QMutexLocker lock(&pendingMutex);
    pendingTopLeft.append(topLeft);
    pendingBottomRight.append(bottomRight);
}

void DeviceItemModel::sendDataChangedSignal()
{
    QVector<QModelIndex> topLeft;
    QVector<QModelIndex> bottomRight;
    PassEnd end;
    {
        const QMutexLocker lock(&pendingMutex);
        topLeft.swap(pendingTopLeft);
        bottomRight.swap(pendingBottomRight);
        if (!pendingPasses.empty()) {
            end = std::move(pendingPasses.front());
            pendingPasses.pop_front();
        }
    }
    for (int range = 0; range < topLeft.size(); ++range)
        emit dataChanged(topLeft[range], bottomRight[range]);
    {
        const QMutexLocker lock(&rowsMutex);
        deviceList.release(end.cuts);
        rows.release(end.cuts);
    }
    freeRetired(std::exchange(announced, std::move(end.retired)));
}

void DeviceItemModel::freeRetired(RetiredObjects objects)
{
    for (const auto &object : objects) {
        Device *open = openDevice;
        if (object.get() == open)
            openDevice.compare_exchange_strong(open, nullptr);
    }
    backEnd->freeRetired(std::move(objects));
}
