// SPDX-License-Identifier: MIT
// What the list shows of one camera, formatted once when the camera takes its place in the list, so that neither a
// paint nor a query of the view ever talks to a camera.
#pragma once

#include <QString>

struct DeviceRow
{
    QString id; ///< GenTL's identifier, by which the current camera is found again
    QString type;
    QString modelName;
    QString serialNumber;
    QString ipAddress;                ///< dotted decimal; empty for other than GEV
    QString macAddress;               ///< six pairs of hexadecimal digits; empty for other than GEV
    bool isAvailable = false;         ///< DEVICE_ACCESS_STATUS_READWRITE, when the row was made
    bool isPasswordProtected = false; ///< has the password lock
    bool isOpen = false;              // this and the next two: when last written
    bool isLocked = false;
    bool hasDefaultPassword = false;
};
