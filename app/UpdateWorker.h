// SPDX-License-Identifier: MIT
// The model's hand on the update thread: each call of its slot is one pass over the cameras.
#pragma once

#include <QObject>

class DeviceItemModel;

class UpdateWorker : public QObject
{
    Q_OBJECT

public:
    /// \param model  not owned; outlives the update thread
    explicit UpdateWorker(DeviceItemModel *model);

signals:
    /// One pass has finished.
    void updateDone();

public slots:
    /// Runs one pass. Thread: the update thread, by a queued call.
    void doUpdate();

private:
    DeviceItemModel *model;
};
