// SPDX-License-Identifier: MIT
// The road of every exported function from its C arguments to its code: the lock of the producer, the state
// of the library, injected failures, exceptions into codes, the last error and the line in the call log.
//
// An exported function makes a Call from its name and its arguments, each in a wrapper that says what it
// means, and lets it answer with a body that does the work or throws GenTLError.
#pragma once

#include "CallSubject.h"
#include "GenTLError.h"
#include "InfoValue.h"
#include "Producer.h"

#include <mutex>
#include <string>
#include <string_view>

namespace simulator {

// The arguments of a call.
struct Handle
{
    const void *value;
};
struct Id
{
    const char *value;
};
struct Address
{
    std::uint64_t value;
};
struct Command
{
    std::int32_t value;
};
struct Number
{
    std::uint64_t value;
};
/// The size behind a pointer, which may be null.
struct Size
{
    const std::size_t *value;
};
/// Milliseconds.
struct Timeout
{
    std::uint64_t value;
};
/// The buffer of a two-step query: shown only when it is null, since that asks for the size.
struct Buffer
{
    const void *value;
};

class Call
{
public:
    template <class... Arguments>
    explicit Call(std::string_view function, const Arguments &...arguments) noexcept
    {
        subject.function = function;
        try {
            (argument(arguments), ...);
        } catch (...) {
            hasFailed = true;
        }
    }

    /// Answers in the initialised library: runs \p body(Producer &) under the producer's lock.
    template <class Body>
    GC_ERROR answer(Body body) noexcept
    {
        return answerAfter([](Producer &) {}, body);
    }

    /// As answer(), with \p prepare run before the failure rules are asked: a list refresh reads them anew.
    template <class Prepare, class Body>
    GC_ERROR answerAfter(Prepare prepare, Body body) noexcept
    {
        return answerAlways([&](Producer &producer) {
            producer.requireInitialized();
            prepare(producer);
            producer.strike(subject);
            body(producer);
        });
    }

    /// Answers in any state of the library; the failure rules are the business of \p body.
    template <class Body>
    GC_ERROR answerAlways(Body body) noexcept
    {
        Producer &producer = Producer::instance();
        const std::lock_guard guard(producer.mutex()); // over the log too, whose lines keep the calls' order
        GC_ERROR code = GC_ERR_SUCCESS;
        try {
            body(producer);
        } catch (...) {
            code = rememberException();
        }
        log(code);
        return code;
    }

    const CallSubject &about() const { return subject; }

    // Outputs, for the log.
    void output(Handle handle);
    void output(Number number);
    void output(std::string_view text); ///< as it stands

    /// Delivers the answer of an info query to the caller (deliver()) and the log.
    /// \throws GenTLError  as deliver(); GC_ERR_INVALID_PARAMETER without a place for the type
    void outputInfo(const InfoValue &value, INFO_DATATYPE *type, void *buffer, std::size_t *size);

    /// Delivers a text of a query that has no data type, such as an identifier.
    void outputText(std::string_view text, char *buffer, std::size_t *size);

private:
    void argument(Handle handle);
    void argument(Id id);
    void argument(Address address);
    void argument(Command command);
    void argument(Number number);
    void argument(Size size);
    void argument(Timeout timeout);
    void argument(Buffer buffer);
    void argument(std::string_view text); ///< as it stands
    void appendArgument(std::string_view text);

    /// The code of the exception in flight, which becomes the thread's last error.
    static GC_ERROR rememberException() noexcept;
    void log(GC_ERROR code) noexcept;

    CallSubject subject;
    std::string arguments; // both empty while the log is closed
    std::string outputs;
    bool hasFailed = false; // no memory for the arguments: the line is left out
};

} // namespace simulator
