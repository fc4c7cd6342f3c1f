// SPDX-License-Identifier: MIT
#include "EventQueue.h"

#include <chrono>
#include <cstring>

namespace simulator {

namespace {

/// An hour at most, and then again: the clocks overflow on GENTL_INFINITE.
constexpr std::uint64_t longestWaitMs = 3'600'000;

} // namespace

std::string ErrorEvent::toBytes() const
{
    std::string bytes(sizeof code, '\0');
    std::memcpy(bytes.data(), &code, sizeof code);
    return bytes + text.substr(0, sizeMax - sizeof code - 1) + '\0';
}

ErrorEvent ErrorEvent::fromBytes(const void *data, std::size_t size)
{
    const auto *bytes = static_cast<const char *>(data);
    if (!data || size <= sizeof(GC_ERROR) || size > sizeMax || bytes[size - 1] != '\0')
        throw GenTLError(GC_ERR_INVALID_BUFFER, "not the data of an event");
    ErrorEvent event;
    std::memcpy(&event.code, bytes, sizeof event.code);
    event.text = bytes + sizeof event.code;
    return event;
}

void EventQueue::fire(ErrorEvent event)
{
    events.push_back(std::move(event));
    ++fired_;
    changed.notify_all();
}

const ErrorEvent &EventQueue::wait(std::mutex &mutex, std::uint64_t timeoutMs)
{
    const auto isOver = [this] { return isClosed || kills > 0 || !events.empty(); };
    do {
        const std::uint64_t waitMs = std::min(timeoutMs, longestWaitMs);
        changed.wait_for(mutex, std::chrono::milliseconds(waitMs), isOver);
    } while (timeoutMs == GENTL_INFINITE && !isOver());

    if (isClosed)
        throw GenTLError(GC_ERR_ABORT, "the event was unregistered");
    if (kills > 0) {
        --kills;
        throw GenTLError(GC_ERR_ABORT, "the wait was killed");
    }
    if (events.empty())
        throw GenTLError(GC_ERR_TIMEOUT, "no event within " + std::to_string(timeoutMs) + " ms");
    return events.front();
}

void EventQueue::kill()
{
    ++kills;
    changed.notify_all();
}

void EventQueue::close()
{
    isClosed = true;
    changed.notify_all();
}

} // namespace simulator
