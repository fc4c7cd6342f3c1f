// SPDX-License-Identifier: MIT
// The functions of the producer that lies: what its modules export. None has an answer of its own.
#include "Liar.h"
#include "LoadedModule.h"

#include <algorithm>
#include <cstring>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

/// That of the program which has loaded this module.
Liar *liar()
{
    using Find = Liar *(*)();
    static const auto find = reinterpret_cast<Find>(testsystem::programSymbol("torvaneFuzzLiar"));
    return find();
}

/// \param selector  a command, an index or an address
template <class... Selector>
const Answer &answer(const char *function, Selector... selector)
{
    return liar()->answer(function, static_cast<std::uint64_t>(selector)...);
}

GC_ERROR fill(const Answer &answer, void *buffer, std::size_t *size)
{
    if (buffer)
        std::memcpy(buffer, answer.content.data(), std::min(answer.content.size(), *size));
    *size = answer.size.value_or(answer.content.size());
    return answer.code;
}

GC_ERROR fillInfo(const Answer &answer, INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    *type = static_cast<INFO_DATATYPE>(answer.number);
    return fill(answer, buffer, size);
}

template <class Number>
GC_ERROR tell(const Answer &answer, Number *number)
{
    *number = static_cast<Number>(answer.number);
    return answer.code;
}

GC_ERROR open(const Answer &answer, void **handle)
{
    *handle = reinterpret_cast<void *>(answer.number);
    return answer.code;
}

} // namespace

EXPORTED GC_ERROR GCGetInfo(TL_INFO_CMD command, INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    return fillInfo(answer(__func__, command), type, buffer, size);
}

EXPORTED GC_ERROR GCGetLastError(GC_ERROR *code, char *text, std::size_t *size)
{
    return fillInfo(answer(__func__), code, text, size);
}

EXPORTED GC_ERROR GCInitLib()
{
    return answer(__func__).code;
}

EXPORTED GC_ERROR GCCloseLib()
{
    return answer(__func__).code;
}

EXPORTED GC_ERROR GCReadPort(PORT_HANDLE, std::uint64_t address, void *buffer, std::size_t *size)
{
    return fill(answer(__func__, address), buffer, size);
}

EXPORTED GC_ERROR GCWritePort(PORT_HANDLE, std::uint64_t address, const void *buffer, std::size_t *size)
{
    const Answer &told = answer(__func__, address);
    if (told.code == GC_ERR_SUCCESS)
        liar()->write(address, {static_cast<const char *>(buffer), *size});
    *size = told.size.value_or(*size);
    return told.code;
}

EXPORTED GC_ERROR GCGetPortInfo(PORT_HANDLE, PORT_INFO_CMD command, INFO_DATATYPE *type, void *buffer,
                                std::size_t *size)
{
    return fillInfo(answer(__func__, command), type, buffer, size);
}

EXPORTED GC_ERROR GCGetPortURLInfo(PORT_HANDLE, std::uint32_t, URL_INFO_CMD command, INFO_DATATYPE *type,
                                   void *buffer, std::size_t *size)
{
    return fillInfo(answer(__func__, command), type, buffer, size);
}

EXPORTED GC_ERROR TLOpen(TL_HANDLE *handle)
{
    return open(answer(__func__), handle);
}

EXPORTED GC_ERROR TLClose(TL_HANDLE)
{
    return answer(__func__).code;
}

EXPORTED GC_ERROR TLUpdateInterfaceList(TL_HANDLE, bool8_t *changed, std::uint64_t)
{
    return tell(answer(__func__), changed);
}

EXPORTED GC_ERROR TLGetNumInterfaces(TL_HANDLE, std::uint32_t *number)
{
    return tell(answer(__func__), number);
}

EXPORTED GC_ERROR TLGetInterfaceID(TL_HANDLE, std::uint32_t index, char *id, std::size_t *size)
{
    return fill(answer(__func__, index), id, size);
}

EXPORTED GC_ERROR TLOpenInterface(TL_HANDLE, const char *, IF_HANDLE *handle)
{
    return open(answer(__func__), handle);
}

EXPORTED GC_ERROR IFClose(IF_HANDLE)
{
    return answer(__func__).code;
}

EXPORTED GC_ERROR IFGetInfo(IF_HANDLE, INTERFACE_INFO_CMD command, INFO_DATATYPE *type, void *buffer,
                            std::size_t *size)
{
    return fillInfo(answer(__func__, command), type, buffer, size);
}

EXPORTED GC_ERROR IFUpdateDeviceList(IF_HANDLE, bool8_t *changed, std::uint64_t)
{
    return tell(answer(__func__), changed);
}

EXPORTED GC_ERROR IFGetNumDevices(IF_HANDLE, std::uint32_t *number)
{
    return tell(answer(__func__), number);
}

EXPORTED GC_ERROR IFGetDeviceID(IF_HANDLE, std::uint32_t index, char *id, std::size_t *size)
{
    return fill(answer(__func__, index), id, size);
}

EXPORTED GC_ERROR IFGetDeviceInfo(IF_HANDLE, const char *, DEVICE_INFO_CMD command, INFO_DATATYPE *type,
                                  void *buffer, std::size_t *size)
{
    return fillInfo(answer(__func__, command), type, buffer, size);
}

EXPORTED GC_ERROR IFOpenDevice(IF_HANDLE, const char *, DEVICE_ACCESS_FLAGS flags, DEV_HANDLE *handle)
{
    return open(answer(__func__, flags), handle);
}

EXPORTED GC_ERROR DevGetPort(DEV_HANDLE, PORT_HANDLE *handle)
{
    return open(answer(__func__), handle);
}

EXPORTED GC_ERROR DevGetInfo(DEV_HANDLE, DEVICE_INFO_CMD command, INFO_DATATYPE *type, void *buffer,
                             std::size_t *size)
{
    return fillInfo(answer(__func__, command), type, buffer, size);
}

EXPORTED GC_ERROR DevClose(DEV_HANDLE)
{
    return answer(__func__).code;
}
