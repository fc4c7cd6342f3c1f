// SPDX-License-Identifier: MIT
// The kinds of entries in GenTL_Interface's table of functions. An entry holds the address of one function
// of a producer and is called like that function: gentl.TLOpen(&handle). What the binding adds to the call
// is the same for all functions of a kind, and is written here once.
//
// The one state that the kinds share is the error that the binding makes up for a function that the producer
// lacks. A producer keeps its last error for each thread; so does this one.
#pragma once

#include "GenTL.h"

#include <cstddef>
#include <limits>

namespace GenICam_Interfaces {

class GenTL_Interface;

/// What an absent function answers: 0x80000000, far from all codes of the standard.
inline constexpr GC_ERROR absentFunctionCode = std::numeric_limits<GC_ERROR>::min();

/// The made-up error of this thread, 0 for none, shared by all producers; its text is kept in
/// GenTL_Function.cpp.
inline constinit thread_local GC_ERROR lastErrorCode = GC_ERR_SUCCESS;

/// Clears this thread's made-up error and its text.
void clearLastError();

/// Makes up this thread's error for an absent function.
/// \param text  the words that GCGetLastError then delivers
/// \return absentFunctionCode
GC_ERROR setFunctionMissing(const char *text);

/// The address of the producer's function of type \p Pointer (one of the types PNAME of GenTL.h), and the
/// name that it is exported under. Only GenTL_Interface, as it loads and releases the producer, sets the
/// address.
template <class Pointer>
class GenTL_Function
{
public:
    GenTL_Function(const GenTL_Function &) = delete;
    GenTL_Function &operator=(const GenTL_Function &) = delete;

    [[nodiscard]] const char *name() const { return name_; }

protected:
    explicit GenTL_Function(const char *name) : name_(name) {}
    ~GenTL_Function() = default;

    const char *name_;
    Pointer entry = nullptr;
};

template <class Pointer>
class PlainFunction;

/// A function that each producer exports. A call forgets this thread's made-up error; arguments and result
/// pass unchanged. There is no test for an absent function on this road, which each register access takes:
/// its entry is a stand-in that answers absentFunctionCode.
template <class... Arguments>
class PlainFunction<GC_ERROR (*)(Arguments...)> : public GenTL_Function<GC_ERROR (*)(Arguments...)>
{
public:
    explicit PlainFunction(const char *name) : GenTL_Function<GC_ERROR (*)(Arguments...)>(name) {}

    GC_ERROR operator()(Arguments... arguments) const
    {
        lastErrorCode = GC_ERR_SUCCESS;
        return this->entry(arguments...);
    }

private:
    friend GenTL_Interface;

    static GC_ERROR standIn(Arguments... /*ignored*/) { return absentFunctionCode; }
    void setAbsent() { this->entry = standIn; }
};

template <class Pointer>
class OptionalFunction;

/// A function that came with a later version of GenTL. Where it is absent, a call makes up this thread's
/// error and answers absentFunctionCode. Where it is present, an earlier made-up error stays as it is: only
/// a plain function forgets it.
template <class... Arguments>
class OptionalFunction<GC_ERROR (*)(Arguments...)> : public GenTL_Function<GC_ERROR (*)(Arguments...)>
{
public:
    /// \param absentText  the made-up error's words
    OptionalFunction(const char *name, const char *absentText)
        : GenTL_Function<GC_ERROR (*)(Arguments...)>(name), absentText(absentText)
    {}

    GC_ERROR operator()(Arguments... arguments) const
    {
        if (!this->entry)
            return setFunctionMissing(absentText);
        return this->entry(arguments...);
    }

private:
    friend GenTL_Interface;

    void setAbsent() { this->entry = nullptr; }

    const char *absentText;
};

/// GCGetLastError, which tells of the made-up error while this thread has one, and else asks the producer.
class LastErrorFunction : public GenTL_Function<PGCGetLastError>
{
public:
    explicit LastErrorFunction(const char *name) : GenTL_Function(name) {}

    /// \param errorCode  receives the code of the failed call from the producer. For a made-up error it is
    ///                   never written, and must not be taken for one.
    /// \param text       the caller's buffer of \p *size bytes, or null to learn the size. With a made-up
    ///                   error pending, a \p *size of 0 counts as no limit.
    /// \param size       in: bytes in \p text; out: bytes of the text with its terminating zero
    /// \return for a made-up error GC_ERR_INVALID_PARAMETER if \p errorCode or \p size is null,
    ///         GC_ERR_BUFFER_TOO_SMALL with \p *size unchanged, or success
    GC_ERROR operator()(GC_ERROR *errorCode, char *text, std::size_t *size) const;

private:
    friend GenTL_Interface;
};

} // namespace GenICam_Interfaces
