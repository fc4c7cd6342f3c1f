// SPDX-License-Identifier: MIT
// Error events of one module: fired by the producer, fetched by a consumer that may wait for them.
#pragma once

#include "GenTL.h"
#include "HandleTable.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>

namespace simulator {

/// What EventGetData delivers: the code in 4 bytes, then the text with its terminator.
struct ErrorEvent
{
    /// Longest event in bytes.
    static constexpr std::size_t sizeMax = 4 + 256;

    GC_ERROR code = GC_ERR_ERROR;
    std::string text; ///< cut to fit into sizeMax

    std::string toBytes() const;

    /// \throws GenTLError  GC_ERR_INVALID_BUFFER: not the bytes of an event
    static ErrorEvent fromBytes(const void *data, std::size_t size);
};

/// Shared by the module and by those who wait, since a module can be closed while one waits.
/// Thread: any, under the producer's lock.
class EventQueue
{
public:
    void fire(ErrorEvent event);

    /// Waits for an event, which stays in the queue.
    /// \param mutex  the producer's lock, held; given up meanwhile
    /// \param timeoutMs  0: don't wait; GENTL_INFINITE: for ever
    /// \throws GenTLError GC_ERR_TIMEOUT; GC_ERR_ABORT after kill() or close()
    const ErrorEvent &wait(std::mutex &mutex, std::uint64_t timeoutMs);

    void pop() { events.pop_front(); }
    void flush() { events.clear(); }
    void kill();  ///< ends one wait: the present or else the next one
    void close(); ///< ends all waits

    std::size_t size() const { return events.size(); }
    std::uint64_t fired() const { return fired_; }

private:
    std::deque<ErrorEvent> events;
    std::condition_variable_any changed;
    std::uint64_t fired_ = 0;
    unsigned kills = 0;
    bool isClosed = false;
};

/// The registration of an event at a module. Closes the queue at its end.
class EventRegistration : public HandleObject
{
public:
    explicit EventRegistration(HandleTable &table) : HandleObject(table) {}
    EventRegistration(const EventRegistration &) = delete;
    EventRegistration &operator=(const EventRegistration &) = delete;
    ~EventRegistration() override { queue->close(); }

    const std::shared_ptr<EventQueue> queue = std::make_shared<EventQueue>();
};

} // namespace simulator
