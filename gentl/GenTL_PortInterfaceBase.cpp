// SPDX-License-Identifier: MIT
// Register access, access mode and error reports of a GenTL port.
#include "GenTL_PortInterfaceBase.h"

#include "GenTL_Interface.h"
#include "PortFailure.h"
#include "ProducerText.h"
#include "ZeroedBuffer.h"

#include <array>
#include <stdexcept>
#include <utility>

namespace GenICam_Interfaces {

GenTL_PortInterfaceBase::GenTL_PortInterfaceBase(const PORT_HANDLE &portHandle,
                                                 std::shared_ptr<GenTL_Interface> genTLInterface)
    : portHandle(portHandle),
      genTLInterface(genTLInterface.get()),
      genTLInterfaceOwner(std::move(genTLInterface))
{
    GenTL_PortInterfaceBase::GetAccessMode();
}

GenTL_PortInterfaceBase::GenTL_PortInterfaceBase(const PORT_HANDLE &portHandle,
                                                 GenTL_Interface *genTLInterface)
    : portHandle(portHandle), genTLInterface(genTLInterface)
{
    GenTL_PortInterfaceBase::GetAccessMode();
}

GenTL_PortInterfaceBase::~GenTL_PortInterfaceBase() = default;

void GenTL_PortInterfaceBase::Read(void *buffer, std::int64_t address, std::int64_t length)
{
    requireConnection();
    auto size = static_cast<std::size_t>(length);
    const GC_ERROR code =
        genTLInterface->GCReadPort(portHandle, static_cast<std::uint64_t>(address), buffer, &size);
    if (code != GC_ERR_SUCCESS)
        reportGenTLError("GCReadPort", code, "");
}

void GenTL_PortInterfaceBase::Write(const void *buffer, std::int64_t address, std::int64_t length)
{
    requireConnection();
    auto size = static_cast<std::size_t>(length);
    const GC_ERROR code =
        genTLInterface->GCWritePort(portHandle, static_cast<std::uint64_t>(address), buffer, &size);
    if (code != GC_ERR_SUCCESS)
        reportGenTLError("GCWritePort", code, "");
}

GenApi_3_2_TVN::EAccessMode GenTL_PortInterfaceBase::GetAccessMode() const
{
    const bool canWrite = askPort(PORT_INFO_ACCESS_WRITE, "GCGetPortInfo(PORT_INFO_ACCESS_WRITE)");
    const bool canRead = askPort(PORT_INFO_ACCESS_READ, "GCGetPortInfo(PORT_INFO_ACCESS_READ)");
    if (canRead)
        return canWrite ? GenApi_3_2_TVN::RW : GenApi_3_2_TVN::RO;
    if (canWrite)
        return GenApi_3_2_TVN::WO;
    if (askPort(PORT_INFO_ACCESS_NI, "GCGetPortInfo(PORT_INFO_ACCESS_NI)"))
        return GenApi_3_2_TVN::NI;
    // The text of the last question has always named the one before it, and is kept for those who search
    // for it.
    if (askPort(PORT_INFO_ACCESS_NA, "GCGetPortInfo(PORT_INFO_ACCESS_NI)"))
        return GenApi_3_2_TVN::NA;
    return GenApi_3_2_TVN::_UndefinedAccesMode;
}

bool GenTL_PortInterfaceBase::askPort(PORT_INFO_CMD question, const char *context) const
{
    requireConnection();
    INFO_DATATYPE type = INFO_DATATYPE_BOOL8;
    bool8_t answer = 0;
    std::size_t size = sizeof answer;
    const GC_ERROR code = genTLInterface->GCGetPortInfo(portHandle, question, &type, &answer, &size);
    if (code != GC_ERR_SUCCESS)
        reportGenTLError(context, code, "");
    return answer != 0;
}

std::string GenTL_PortInterfaceBase::getPortName() const
{
    requireConnection();
    constexpr const char *context = "GCGetPortInfo(PORT_INFO_PORTNAME)";
    INFO_DATATYPE type = INFO_DATATYPE_STRING;
    std::size_t size = 0;
    GC_ERROR code = genTLInterface->GCGetPortInfo(portHandle, PORT_INFO_PORTNAME, &type, nullptr, &size);
    if (code != GC_ERR_SUCCESS)
        reportGenTLError(context, code, "");

    const ZeroedBuffer name(size);
    code = genTLInterface->GCGetPortInfo(portHandle, PORT_INFO_PORTNAME, &type, name.data(), &size);
    if (code != GC_ERR_SUCCESS)
        reportGenTLError(context, code, "");
    return producerText(name.data(), name.size());
}

void GenTL_PortInterfaceBase::requireConnection() const
{
    if (!connected)
        throw std::runtime_error("The port is closed.");
}

void GenTL_PortInterfaceBase::reportGenTLError(std::string_view context, GC_ERROR code,
                                               std::string_view detail) const
{
    std::array<char, 1028> text{};
    std::size_t size = text.size();
    GC_ERROR lastCode = GC_ERR_SUCCESS;
    const GC_ERROR result = genTLInterface->GCGetLastError(&lastCode, text.data(), &size);

    std::string message(context);
    if (result == GC_ERR_SUCCESS) {
        message += " failed with code " + std::to_string(lastCode) + "! Message: ";
        message += producerText(text.data(), text.size());
    } else {
        message += " failed with code " + std::to_string(code) + " and GCGetLastError failed with code " +
                   std::to_string(result) + "!";
    }
    message += ' ';
    message += detail;
    throw PortFailure(message, code);
}

} // namespace GenICam_Interfaces
