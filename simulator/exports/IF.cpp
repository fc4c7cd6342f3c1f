// SPDX-License-Identifier: MIT
// Interfaces and their lists of cameras.
#include "Call.h"
#include "Exports.h"

using namespace simulator;

GC_ERROR IFClose(IF_HANDLE handle)
{
    return Call{"IFClose", Handle{handle}}.answer([&](Producer &producer) {
        auto &interface = producer.handles().get<Interface>(handle);
        dynamic_cast<TransportLayer &>(*interface.parent()).close(interface);
    });
}

GC_ERROR IFGetInfo(IF_HANDLE handle, INTERFACE_INFO_CMD command, INFO_DATATYPE *type, void *buffer,
                   std::size_t *size)
{
    Call call{"IFGetInfo", Handle{handle}, Command{command}, Buffer{buffer}};
    return call.answer([&](Producer &producer) {
        const auto &settings = producer.handles().get<Interface>(handle).settings();
        call.outputInfo(interfaceInfo(command, settings), type, buffer, size);
    });
}

GC_ERROR IFGetParentTL(IF_HANDLE handle, TL_HANDLE *parent)
{
    Call call{"IFGetParentTL", Handle{handle}};
    return call.answer([&](Producer &producer) {
        const auto &interface = producer.handles().get<Interface>(handle);
        require(parent, "the pointer to the handle");
        *parent = interface.parent()->handle();
        call.output(Handle{*parent});
    });
}

GC_ERROR IFUpdateDeviceList(IF_HANDLE handle, bool8_t *changed, std::uint64_t timeout)
{
    Call call{"IFUpdateDeviceList", Handle{handle}, Timeout{timeout}};
    const auto reload = [](Producer &producer) { producer.reloadConfiguration(); };
    return call.answerAfter(reload, [&](Producer &producer) {
        producer.handles().get<Interface>(handle);
        producer.pauseForUpdate(timeout);
        const bool hasChanged = producer.handles().get<Interface>(handle).refresh();
        if (changed)
            *changed = hasChanged;
        call.output(Number{hasChanged});
    });
}

GC_ERROR IFGetNumDevices(IF_HANDLE handle, std::uint32_t *count)
{
    Call call{"IFGetNumDevices", Handle{handle}};
    return call.answer([&](Producer &producer) {
        const auto &cameras = producer.handles().get<Interface>(handle).cameras();
        require(count, "the pointer to the count");
        *count = static_cast<std::uint32_t>(cameras.size());
        call.output(Number{*count});
    });
}

GC_ERROR IFGetDeviceID(IF_HANDLE handle, std::uint32_t index, char *id, std::size_t *size)
{
    Call call{"IFGetDeviceID", Handle{handle}, Number{index}, Buffer{id}};
    return call.answer([&](Producer &producer) {
        const auto &cameras = producer.handles().get<Interface>(handle).cameras();
        if (index >= cameras.size())
            throw GenTLError(GC_ERR_INVALID_INDEX, "no camera " + std::to_string(index) + " in the list");
        call.outputText(cameras[index]->id, id, size);
    });
}

GC_ERROR IFGetDeviceInfo(IF_HANDLE handle, const char *id, DEVICE_INFO_CMD command, INFO_DATATYPE *type,
                         void *buffer, std::size_t *size)
{
    Call call{"IFGetDeviceInfo", Handle{handle}, Id{id}, Command{command}, Buffer{buffer}};
    return call.answer([&](Producer &producer) {
        const auto &interface = producer.handles().get<Interface>(handle);
        require(id, "the identifier");
        call.outputInfo(deviceInfo(command, *interface.find(id), interface), type, buffer, size);
    });
}

GC_ERROR IFOpenDevice(IF_HANDLE handle, const char *id, DEVICE_ACCESS_FLAGS access, DEV_HANDLE *device)
{
    Call call{"IFOpenDevice", Handle{handle}, Id{id}, std::to_string(access)};
    return call.answer([&](Producer &producer) {
        auto &interface = producer.handles().get<Interface>(handle);
        require(id, "the identifier");
        require(device, "the pointer to the handle");
        *device = interface.open(id, access).handle();
        call.output(Handle{*device});
    });
}
