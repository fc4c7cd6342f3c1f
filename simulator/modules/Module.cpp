// SPDX-License-Identifier: MIT
#include "Module.h"

namespace simulator {

InfoValue Module::portInfo(PORT_INFO_CMD command) const
{
    const PortIdentity identity = port();
    switch (command) {
    case PORT_INFO_ID:
        return InfoValue::text(identity.id);
    case PORT_INFO_VENDOR:
        return InfoValue::text(identity.vendor);
    case PORT_INFO_MODEL:
        return InfoValue::text(identity.model);
    case PORT_INFO_TLTYPE:
        return InfoValue::text(identity.tlType);
    case PORT_INFO_MODULE:
        return InfoValue::text(identity.module);
    case PORT_INFO_LITTLE_ENDIAN:
        return InfoValue::boolean(!identity.isBigEndian);
    case PORT_INFO_BIG_ENDIAN:
        return InfoValue::boolean(identity.isBigEndian);
    case PORT_INFO_ACCESS_READ:
        return InfoValue::boolean(identity.isReadable);
    case PORT_INFO_ACCESS_WRITE:
        return InfoValue::boolean(identity.isWritable);
    case PORT_INFO_ACCESS_NA:
        return InfoValue::boolean(false);
    case PORT_INFO_ACCESS_NI:
        return InfoValue::boolean(!identity.isReadable && !identity.isWritable);
    case PORT_INFO_VERSION:
        return InfoValue::text(identity.version);
    case PORT_INFO_PORTNAME:
        return InfoValue::text(identity.portName);
    default:
        throw GenTLError(GC_ERR_INVALID_PARAMETER, "unknown port query " + std::to_string(command));
    }
}

std::string Module::read(std::uint64_t, std::size_t)
{
    throw GenTLError(GC_ERR_NOT_IMPLEMENTED, "this module has no registers");
}

void Module::write(std::uint64_t, std::string_view)
{
    throw GenTLError(GC_ERR_NOT_IMPLEMENTED, "this module has no registers");
}

EventRegistration &Module::registerErrorEvent()
{
    if (errorEvent)
        throw GenTLError(GC_ERR_RESOURCE_IN_USE, "the event is registered already");
    errorEvent = std::make_unique<EventRegistration>(table());
    return *errorEvent;
}

void Module::unregisterErrorEvent()
{
    if (!errorEvent)
        throw GenTLError(GC_ERR_INVALID_PARAMETER, "the event is not registered");
    errorEvent.reset();
}

void Module::fireError(const ErrorEvent &event)
{
    if (errorEvent)
        errorEvent->queue->fire(event);
    if (parent_)
        parent_->fireError(event);
}

} // namespace simulator
