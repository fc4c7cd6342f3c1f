// SPDX-License-Identifier: MIT
// What a device tells through its interface, without being opened. Each query goes to the producer anew.
#include "ConsoleIO.h"
#include "Device.h"
#include "GenTL.h"
#include "GenTL_Interface.h"
#include "LastError.h"
#include "TLInterface.h"
#include "TextBuffer.h"

#include <cstring>
#include <stdexcept>

namespace {

// The text of every failed query, from its start, which names the query.
std::string failureText(const char *start, const std::string &id, GC_ERROR code)
{
    return console::compose(start, id, ") failed with code ", code, "!");
}

} // namespace

GC_ERROR Device::queryText(DEVICE_INFO_CMD command, std::string &text) const
{
    TextBuffer buffer;
    INFO_DATATYPE dataType = INFO_DATATYPE_UNKNOWN;
    std::size_t size = TextBuffer::size();
    const GC_ERROR code = gentl->IFGetDeviceInfo(interfaceOwner->handle(), id_.c_str(), command, &dataType,
                                                 buffer.data(), &size);
    if (code == GC_ERR_SUCCESS)
        text = buffer.text();
    return code;
}

std::string Device::textOrReport(DEVICE_INFO_CMD command, const char *failure) const
{
    if (isOff())
        return {};
    std::string text;
    if (const GC_ERROR code = queryText(command, text); code != GC_ERR_SUCCESS) {
        console::printLine(failureText(failure, id_, code));
        reportLastError(gentl);
    }
    return text;
}

std::string Device::model() const
{
    return textOrReport(DEVICE_INFO_MODEL, "ERROR: IFGetDeviceInfo(DEVICE_INFO_MODEL,");
}

std::string Device::tlType() const
{
    return textOrReport(DEVICE_INFO_TLTYPE, "ERROR: IFGetDeviceInfo(DEVICE_INFO_TLTYPE,");
}

std::string Device::displayName() const
{
    return textOrReport(DEVICE_INFO_DISPLAYNAME, "ERROR: IFGetDeviceInfo(DEVICE_INFO_DISPLAYNAME,");
}

std::string Device::serialNumber() const
{
    return textOrReport(DEVICE_INFO_SERIAL_NUMBER, "ERROR: IFGetDeviceInfo(DEVICE_INFO_SERIAL_NUMBER,");
}

std::string Device::userDefinedName() const
{
    if (isOff())
        return {};
    std::string text;
    if (const GC_ERROR code = queryText(DEVICE_INFO_USER_DEFINED_NAME, text); code != GC_ERR_SUCCESS)
        throw std::runtime_error(
            failureText("ERROR: IFGetDeviceInfo(DEVICE_INFO_USER_DEFINED_NAME,", id_, code));
    return text;
}

std::int32_t Device::accessStatus() const
{
    if (isOff())
        return DEVICE_ACCESS_STATUS_UNKNOWN;
    // The size promises a text buffer, so it is one: only the first 4 bytes are the status.
    TextBuffer buffer;
    INFO_DATATYPE dataType = INFO_DATATYPE_UNKNOWN;
    std::size_t size = TextBuffer::size();
    const GC_ERROR code = gentl->IFGetDeviceInfo(interfaceOwner->handle(), id_.c_str(),
                                                 DEVICE_INFO_ACCESS_STATUS, &dataType, buffer.data(), &size);
    if (code != GC_ERR_SUCCESS) {
        console::printLine(failureText("ERROR: IFGetDeviceInfo(DEVICE_INFO_ACCESS_STATUS,", id_, code));
        reportLastError(gentl);
    }
    std::int32_t status = DEVICE_ACCESS_STATUS_UNKNOWN;
    std::memcpy(&status, buffer.data(), sizeof status);
    return status;
}
