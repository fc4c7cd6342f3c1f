// SPDX-License-Identifier: MIT
// Open cameras. They have no data streams.
#include "Call.h"
#include "Exports.h"

using namespace simulator;

GC_ERROR DevClose(DEV_HANDLE handle)
{
    return Call{"DevClose", Handle{handle}}.answer([&](Producer &producer) {
        auto &device = producer.handles().get<Device>(handle);
        dynamic_cast<Interface &>(*device.parent()).close(device);
    });
}

GC_ERROR DevGetPort(DEV_HANDLE handle, PORT_HANDLE *port)
{
    Call call{"DevGetPort", Handle{handle}};
    return call.answer([&](Producer &producer) {
        auto &device = producer.handles().get<Device>(handle);
        require(port, "the pointer to the handle");
        *port = device.remotePort().handle();
        call.output(Handle{*port});
    });
}

GC_ERROR DevGetInfo(DEV_HANDLE handle, DEVICE_INFO_CMD command, INFO_DATATYPE *type, void *buffer,
                    std::size_t *size)
{
    Call call{"DevGetInfo", Handle{handle}, Command{command}, Buffer{buffer}};
    return call.answer([&](Producer &producer) {
        const auto &device = producer.handles().get<Device>(handle);
        const auto &interface = dynamic_cast<const Interface &>(*device.parent());
        call.outputInfo(deviceInfo(command, device.camera().settings(), interface), type, buffer, size);
    });
}

GC_ERROR DevGetParentIF(DEV_HANDLE handle, IF_HANDLE *parent)
{
    Call call{"DevGetParentIF", Handle{handle}};
    return call.answer([&](Producer &producer) {
        const auto &device = producer.handles().get<Device>(handle);
        require(parent, "the pointer to the handle");
        *parent = device.parent()->handle();
        call.output(Handle{*parent});
    });
}

GC_ERROR DevGetNumDataStreams(DEV_HANDLE handle, std::uint32_t *count)
{
    Call call{"DevGetNumDataStreams", Handle{handle}};
    return call.answer([&](Producer &producer) {
        producer.handles().get<Device>(handle);
        require(count, "the pointer to the count");
        *count = 0;
        call.output(Number{*count});
    });
}

GC_ERROR DevGetDataStreamID(DEV_HANDLE handle, std::uint32_t index, char *, std::size_t *)
{
    return Call{"DevGetDataStreamID", Handle{handle}, Number{index}}.answer([&](Producer &producer) {
        producer.handles().get<Device>(handle);
        throw GenTLError(GC_ERR_INVALID_INDEX, "the camera has no data streams");
    });
}

GC_ERROR DevOpenDataStream(DEV_HANDLE handle, const char *id, DS_HANDLE *)
{
    return Call{"DevOpenDataStream", Handle{handle}, Id{id}}.answer([&](Producer &producer) {
        producer.handles().get<Device>(handle);
        require(id, "the identifier");
        throw GenTLError(GC_ERR_INVALID_ID, "the camera has no data streams");
    });
}
