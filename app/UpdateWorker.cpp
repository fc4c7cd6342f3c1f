// SPDX-License-Identifier: MIT
#include "UpdateWorker.h"

#include "DeviceItemModel.h"

UpdateWorker::UpdateWorker(DeviceItemModel *model) : model(model) {}

void UpdateWorker::doUpdate()
{
    model->updateRows();
    emit updateDone();
}
