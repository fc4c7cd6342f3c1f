// SPDX-License-Identifier: MIT
// The TL module and its list of interfaces.
#include "Call.h"
#include "Exports.h"

using namespace simulator;

GC_ERROR TLOpen(TL_HANDLE *handle)
{
    Call call{"TLOpen"};
    return call.answer([&](Producer &producer) {
        require(handle, "the pointer to the handle");
        *handle = producer.openTransportLayer().handle();
        call.output(Handle{*handle});
    });
}

GC_ERROR TLClose(TL_HANDLE handle)
{
    return Call{"TLClose", Handle{handle}}.answer([&](Producer &producer) {
        producer.handles().get<TransportLayer>(handle);
        producer.closeTransportLayer();
    });
}

GC_ERROR TLGetInfo(TL_HANDLE handle, TL_INFO_CMD command, INFO_DATATYPE *type, void *buffer,
                   std::size_t *size)
{
    Call call{"TLGetInfo", Handle{handle}, Command{command}, Buffer{buffer}};
    return call.answer([&](Producer &producer) {
        producer.handles().get<TransportLayer>(handle);
        call.outputInfo(producerInfo(command, producer.configuration()), type, buffer, size);
    });
}

GC_ERROR TLUpdateInterfaceList(TL_HANDLE handle, bool8_t *changed, std::uint64_t timeout)
{
    Call call{"TLUpdateInterfaceList", Handle{handle}, Timeout{timeout}};
    const auto reload = [](Producer &producer) { producer.reloadConfiguration(); };
    return call.answerAfter(reload, [&](Producer &producer) {
        producer.handles().get<TransportLayer>(handle);
        producer.pauseForUpdate(timeout);
        const bool hasChanged = producer.handles().get<TransportLayer>(handle).refresh();
        if (changed)
            *changed = hasChanged;
        call.output(Number{hasChanged});
    });
}

GC_ERROR TLGetNumInterfaces(TL_HANDLE handle, std::uint32_t *count)
{
    Call call{"TLGetNumInterfaces", Handle{handle}};
    return call.answer([&](Producer &producer) {
        const auto &interfaces = producer.handles().get<TransportLayer>(handle).interfaces();
        require(count, "the pointer to the count");
        *count = static_cast<std::uint32_t>(interfaces.size());
        call.output(Number{*count});
    });
}

GC_ERROR TLGetInterfaceID(TL_HANDLE handle, std::uint32_t index, char *id, std::size_t *size)
{
    Call call{"TLGetInterfaceID", Handle{handle}, Number{index}, Buffer{id}};
    return call.answer([&](Producer &producer) {
        const auto &interfaces = producer.handles().get<TransportLayer>(handle).interfaces();
        if (index >= interfaces.size())
            throw GenTLError(GC_ERR_INVALID_INDEX, "no interface " + std::to_string(index) + " in the list");
        call.outputText(interfaces[index]->id, id, size);
    });
}

GC_ERROR TLGetInterfaceInfo(TL_HANDLE handle, const char *id, INTERFACE_INFO_CMD command, INFO_DATATYPE *type,
                            void *buffer, std::size_t *size)
{
    Call call{"TLGetInterfaceInfo", Handle{handle}, Id{id}, Command{command}, Buffer{buffer}};
    return call.answer([&](Producer &producer) {
        const auto &tl = producer.handles().get<TransportLayer>(handle);
        require(id, "the identifier");
        call.outputInfo(interfaceInfo(command, *tl.find(id)), type, buffer, size);
    });
}

GC_ERROR TLOpenInterface(TL_HANDLE handle, const char *id, IF_HANDLE *interface)
{
    Call call{"TLOpenInterface", Handle{handle}, Id{id}};
    return call.answer([&](Producer &producer) {
        auto &tl = producer.handles().get<TransportLayer>(handle);
        require(id, "the identifier");
        require(interface, "the pointer to the handle");
        *interface = tl.open(id).handle();
        call.output(Handle{*interface});
    });
}
