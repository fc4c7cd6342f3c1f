// SPDX-License-Identifier: MIT
// The cameras as the window sees them: one preformatted row for each, the one current row, and the one camera that is
// open for the password panel. A worker on a thread of its own brings the rows up to date once a second.
//
// Threads: the worker changes the rows (updateRows) and stores what has changed; the GUI thread announces it
// (sendDataChangedSignal). The readers data, rowCount and index take no lock: the sequences of rows are made for that.
// currentIndex, currentId and openDevice are written on both threads, each for itself: whoever uses them takes one copy
// and looks whether its device is still there. No two mutexes are ever held together.
//
// Rows come and go without the signals of QAbstractItemModel for that: rowCount just answers another number, and
// dataChanged names changed and new rows. A view has to look at the number itself after each announcement.
#pragma once

#include "DeviceRow.h"
#include "RetiredObjects.h"
#include "SlotSequence.h"

#include <QAbstractItemModel>
#include <QMutex>
#include <QPixmap>
#include <QVector>
#include <atomic>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

class BackEnd;
class Device;
class QThread;
class UpdateWorker;

class DeviceItemModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role
    {
        TypeRole = Qt::UserRole + 1,
        ModelNameRole = Qt::UserRole + 2,
        SerialNumberRole = Qt::UserRole + 3,
        IpAddressRole = Qt::UserRole + 4,
        MacAddressRole = Qt::UserRole + 5,
        IsAvailableRole = Qt::UserRole + 6,
        IsPasswordProtectedRole = Qt::UserRole + 7,
        IsOpenRole = Qt::UserRole + 8,
        IsLockedRole = Qt::UserRole + 9,
        HasDefaultPasswordRole = Qt::UserRole + 10
    };

    /// Searches for producers, loads them, and starts the update thread: the first rows come about a second later.
    DeviceItemModel(QObject *parent, std::shared_ptr<BackEnd> backEnd);
    /// Waits for the pass in progress, however long it takes, and for no other.
    ~DeviceItemModel() override;

    /// Whether any producer file was found at the start.
    bool producersFound() const { return hasProducers; }
    /// The current row; invalid when there is none. Thread: GUI.
    QModelIndex currentIndex() const { return currentIndex_; }
    /// Whose updateDone tells of each finished pass. Owned by this object.
    const UpdateWorker *updateWorker() const { return worker; }

    /// The index of an existing row points to its Device by internalPointer().
    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    /// \throws std::out_of_range  for a role of the rows and an index outside them
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// One pass: asks the back end for its devices and follows them. Thread: the update thread.
    /// Whatever the back end lets out goes on to the caller.
    void updateRows();

    /// Opens the camera of the current row for a panel, with control access, and closes the one before it.
    /// Takes as long as the camera does.
    /// \return false when there is no such camera any more: nothing is selected then, and nothing else has changed
    bool openCurrentDevice();
    /// Names the panel of the camera that has just been opened: from now on no other panel closes it. Not owned.
    void setOpenFor(const QObject *panel) { openFor = panel; }
    /// Closes the open camera, unless it is called by the signal of a panel that the camera was not opened for. Its row
    /// goes on showing it as open.
    void closeCurrentDevice();

signals:
    /// The current row is another one, or none.
    void selectedChanged(const QModelIndex &current, const QModelIndex &previous);
    void currentLockChanged(bool lock);
    /// The camera of the current row has left the list.
    void currentDeviceRemoved();

public slots:
    /// \throws std::out_of_range  when \p current names no row, unless it is the current index already
    void setCurrentIndex(const QModelIndex &current, const QModelIndex &previous);
    /// Makes \p current the current row, with the index as it is after the change for the previous one.
    void switchCurrentIndex(const QModelIndex &current);
    /// Reads the lock of the current row's camera again.
    void onCurrentLockChanged();
    /// Announces what has changed and is not announced yet. Called once for each pass, and frees what the pass before
    /// it had retired. Thread: GUI.
    void sendDataChangedSignal();

private:
    using SharedRow = std::shared_ptr<const DeviceRow>;

    // What a pass leaves behind for its announcement.
    struct PassEnd
    {
        RetiredObjects retired;
        int cuts = 0; // of the rows, as of this pass
    };

    // Making rows (DeviceItemModelRows.cpp). They talk to the device.
    SharedRow makeRow(const Device &device) const;
    static QString formatIpAddress(quint32 address);
    static QString formatMacAddress(qint64 address);

    // The pass and the thread (DeviceItemModelUpdate.cpp).
    void startUpdates();
    void replaceRows(const std::vector<Device *> &fresh, int common);
    void addRows(const std::vector<Device *> &fresh, int common);
    void cutRows(int common);
    void followCurrentDevice();
    void storeChange(int first, int last);
    void freeRetired(RetiredObjects objects);

    QVariant icon(const DeviceRow &row) const;
    void closeOpenDevice();
    int rowOf(const QModelIndex &index) const;
    template <class Change>
    void changeRow(const QModelIndex &index, Change change);

    const std::shared_ptr<BackEnd> backEnd;
    SlotSequence<Device *> deviceList; // not owned; the device of each row
    std::atomic<Device *> openDevice = nullptr;
    const QObject *openFor = nullptr; // the panel of openDevice; GUI thread, compared only
    const QPixmap lockedIcon;
    const QPixmap unlockedIcon;
    const QPixmap defaultPasswordIcon;
    QModelIndex currentIndex_;
    const Device *activatedDevice = nullptr; // from switchCurrentIndex to openCurrentDevice; GUI thread
    std::atomic<std::shared_ptr<const QString>> currentId; // null when there is no current row
    bool hasProducers = false;
    SlotSequence<SharedRow> rows;
    QMutex rowsMutex; // the writers of deviceList and rows
    QThread *updateThread = nullptr;
    UpdateWorker *worker = nullptr; // lives on updateThread, which ends it
    QMutex pendingMutex;            // the ranges and the ends of passes that are not announced yet
    QVector<QModelIndex> pendingTopLeft;
    QVector<QModelIndex> pendingBottomRight;
    std::deque<PassEnd> pendingPasses;    // the oldest first
    std::vector<std::uint32_t> rowProbes; // of each row's device when the row was made; update thread
    QMutex backEndMutex;                  // updateDevices and devices of the back end
    RetiredObjects announced;             // by the last announcement; freed with the next one
};
