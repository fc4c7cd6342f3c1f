// SPDX-License-Identifier: MIT
// Events. Every module fires EVENT_ERROR, when a camera is lost or a changed configuration is wrong; the
// other types belong to what the simulated cameras don't have.
#include "Call.h"
#include "Exports.h"

using namespace simulator;

namespace {

void requireErrorEvent(EVENT_TYPE type)
{
    if (type < EVENT_ERROR || (type > EVENT_MODULE && type < EVENT_CUSTOM_ID))
        throw GenTLError(GC_ERR_INVALID_PARAMETER, "unknown event type " + std::to_string(type));
    if (type != EVENT_ERROR)
        throw GenTLError(GC_ERR_NOT_IMPLEMENTED, "only EVENT_ERROR is fired");
}

/// Shared, since the event may be unregistered while somebody waits.
std::shared_ptr<EventQueue> queueOf(Producer &producer, EVENT_HANDLE event)
{
    return producer.handles().get<EventRegistration>(event).queue;
}

InfoValue eventInfo(EVENT_INFO_CMD command, const EventQueue &queue)
{
    switch (command) {
    case EVENT_EVENT_TYPE:
        return InfoValue::int32(EVENT_ERROR);
    case EVENT_NUM_IN_QUEUE:
        return InfoValue::size(queue.size());
    case EVENT_NUM_FIRED:
        return InfoValue::uint64(queue.fired());
    case EVENT_SIZE_MAX:
    case EVENT_INFO_DATA_SIZE_MAX:
        return InfoValue::size(ErrorEvent::sizeMax);
    default:
        throw GenTLError(GC_ERR_INVALID_PARAMETER, "unknown event query " + std::to_string(command));
    }
}

InfoValue eventDataInfo(EVENT_DATA_INFO_CMD command, const ErrorEvent &event)
{
    switch (command) {
    case EVENT_DATA_ID:
        return InfoValue::int32(event.code);
    case EVENT_DATA_VALUE:
        return InfoValue::text(event.text);
    case EVENT_DATA_NUMID:
        throw GenTLError(GC_ERR_NOT_AVAILABLE, "an error event has a code and no feature");
    default:
        throw GenTLError(GC_ERR_INVALID_PARAMETER, "unknown event data query " + std::to_string(command));
    }
}

} // namespace

GC_ERROR GCRegisterEvent(EVENTSRC_HANDLE source, EVENT_TYPE type, EVENT_HANDLE *event)
{
    Call call{"GCRegisterEvent", Handle{source}, Command{type}};
    return call.answer([&](Producer &producer) {
        auto &module = producer.handles().get<Module>(source);
        require(event, "the pointer to the handle");
        requireErrorEvent(type);
        *event = module.registerErrorEvent().handle();
        call.output(Handle{*event});
    });
}

GC_ERROR GCUnregisterEvent(EVENTSRC_HANDLE source, EVENT_TYPE type)
{
    return Call{"GCUnregisterEvent", Handle{source}, Command{type}}.answer([&](Producer &producer) {
        auto &module = producer.handles().get<Module>(source);
        requireErrorEvent(type);
        module.unregisterErrorEvent();
    });
}

// A null buffer asks for the size of the largest event and doesn't wait. An event that the buffer can't hold
// stays in the queue.
GC_ERROR EventGetData(EVENT_HANDLE event, void *buffer, std::size_t *size, std::uint64_t timeout)
{
    Call call{"EventGetData", Handle{event}, Buffer{buffer}, Timeout{timeout}};
    return call.answer([&](Producer &producer) {
        const auto queue = queueOf(producer, event);
        require(size, "the pointer to the size");
        if (!buffer) {
            *size = ErrorEvent::sizeMax;
            return call.output(Number{*size});
        }
        const std::string bytes = queue->wait(producer.mutex(), timeout).toBytes();
        deliver(bytes, buffer, size);
        queue->pop();
        call.output(hexBytes(bytes.data(), bytes.size()));
    });
}

GC_ERROR EventGetDataInfo(EVENT_HANDLE event, const void *data, std::size_t dataSize,
                          EVENT_DATA_INFO_CMD command, INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    Call call{"EventGetDataInfo", Handle{event}, Number{dataSize}, Command{command}, Buffer{buffer}};
    return call.answer([&](Producer &producer) {
        queueOf(producer, event);
        call.outputInfo(eventDataInfo(command, ErrorEvent::fromBytes(data, dataSize)), type, buffer, size);
    });
}

GC_ERROR EventGetInfo(EVENT_HANDLE event, EVENT_INFO_CMD command, INFO_DATATYPE *type, void *buffer,
                      std::size_t *size)
{
    Call call{"EventGetInfo", Handle{event}, Command{command}, Buffer{buffer}};
    return call.answer([&](Producer &producer) {
        call.outputInfo(eventInfo(command, *queueOf(producer, event)), type, buffer, size);
    });
}

GC_ERROR EventFlush(EVENT_HANDLE event)
{
    return Call{"EventFlush", Handle{event}}.answer(
        [&](Producer &producer) { queueOf(producer, event)->flush(); });
}

GC_ERROR EventKill(EVENT_HANDLE event)
{
    return Call{"EventKill", Handle{event}}.answer(
        [&](Producer &producer) { queueOf(producer, event)->kill(); });
}
