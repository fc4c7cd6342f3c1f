// SPDX-License-Identifier: MIT
// From a device to the row that the list shows of it.
#include "Device.h"
#include "DeviceItemModel.h"

#include <array>

namespace {

// By TransportType.
constexpr std::array transportLabels{"GEV", "U3V", "vOrnEth", "vOrnUSB", "Other", "Unknown"};

constexpr std::int32_t StatusReadWrite = 1; // DEVICE_ACCESS_STATUS_READWRITE

// Every label from the device's own to the last one is assigned in turn, so that a known type reads "Unknown". Nothing
// shows it.
QString transportLabel(TransportType type)
{
    QString text;
    for (auto label = static_cast<std::size_t>(type); label < transportLabels.size(); ++label)
        text = QLatin1String(transportLabels[label]);
    return text;
}

} // namespace

DeviceItemModel::SharedRow DeviceItemModel::makeRow(const Device &device) const
{
    const auto row = std::make_shared<DeviceRow>();
    const bool isGev = device.transportType() == TransportType::GEV;
    row->id = QString::fromStdString(device.id());
    row->isAvailable = device.accessStatus() == StatusReadWrite;
    row->hasDefaultPassword = device.isDefaultPassword();
    if (isGev)
        row->ipAddress = formatIpAddress(device.ipAddress());
    row->isLocked = device.isLocked();
    if (isGev)
        row->macAddress = formatMacAddress(static_cast<qint64>(device.macAddress()));
    row->modelName = QString::fromStdString(device.model());
    row->isOpen = device.isOpen();
    row->serialNumber = QString::fromStdString(device.serialNumber());
    row->isPasswordProtected = isGev && device.passwordSupported();
    row->type = transportLabel(device.transportType());
    return row;
}

QString DeviceItemModel::formatIpAddress(quint32 address)
{
    const auto byte = [address](int shift) { return QString::number((address >> shift) & 0xff, 10); };
    return QStringList{byte(24), byte(16), byte(8), byte(0)}.join(QLatin1Char('.'));
}

QString DeviceItemModel::formatMacAddress(qint64 address)
{
    QString text = QStringLiteral("%1").arg(address, 12, 16, QLatin1Char('0'));
    for (const int position : {2, 5, 8, 11, 14})
        text.insert(position, QLatin1Char(':'));
    return text;
}
