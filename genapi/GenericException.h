// SPDX-License-Identifier: MIT
// The exceptions of the GenApi layer and the helper that composes their description. They are a family of
// their own: whoever catches std::exception alone does not see them.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

namespace GenICam_3_2_TVN {

/// Bytes of a composed description, its closing zero included.
inline constexpr std::size_t descriptionBufferSize = 256;

/// Base of all exceptions that the layer throws of itself. Failures of a port pass through the layer
/// unchanged and are not of this family.
class GenericException
{
public:
    GenericException(const char *description, const char *sourceFileName, unsigned sourceLine,
                     const char *exceptionType);
    virtual ~GenericException();
    GenericException(const GenericException &) noexcept = default;
    GenericException &operator=(const GenericException &) noexcept = default;

    /// The bare text, for the user. All texts here live as long as a copy of the exception.
    const char *GetDescription() const noexcept;
    /// The description with the type and the place behind it, for a developer.
    const char *what() const noexcept;
    /// Where it was thrown, as a name of the layer ("GenApi/Pointer"), never as a path.
    const char *GetSourceFileName() const noexcept;
    unsigned GetSourceLine() const noexcept;
    /// The name of the class, such as "AccessException".
    const char *GetExceptionType() const noexcept;

private:
    struct Report;
    std::shared_ptr<const Report> report;
};

/// An argument that no state of the object would make right, such as a description that isn't one.
class InvalidArgumentException : public GenericException
{
public:
    static constexpr const char *typeName = "InvalidArgumentException";
    using GenericException::GenericException;
};

/// A value outside the range that the node or its register has.
class OutOfRangeException : public GenericException
{
public:
    static constexpr const char *typeName = "OutOfRangeException";
    using GenericException::GenericException;
};

/// The description itself is at fault: a child is missing or unreadable, a reference leads nowhere or in a
/// circle.
class PropertyException : public GenericException
{
public:
    static constexpr const char *typeName = "PropertyException";
    using GenericException::GenericException;
};

/// The state of the object forbids the call.
class RuntimeException : public GenericException
{
public:
    static constexpr const char *typeName = "RuntimeException";
    using GenericException::GenericException;
};

/// The access mode of a node, or a node map that is not there, forbids the call.
class AccessException : public GenericException
{
public:
    static constexpr const char *typeName = "AccessException";
    using GenericException::GenericException;
};

/// A fault of the calling program, such as a dereferenced null.
class LogicalErrorException : public GenericException
{
public:
    static constexpr const char *typeName = "LogicalErrorException";
    using GenericException::GenericException;
};

/// Builds an exception for one place in the sources:
///     throw ExceptionReporter<AccessException>("GenApi/Node", __LINE__).Report("...", ...);
template <class Exception>
class ExceptionReporter
{
public:
    /// \param sourceFileName  see GenericException::GetSourceFileName
    ExceptionReporter(const char *sourceFileName, unsigned sourceLine)
        : sourceFileName{sourceFileName}, sourceLine{sourceLine}
    {}

    /// Composes the description by the rules of printf and cuts it after 255 bytes.
    Exception Report(const char *format, ...) const
    {
        char description[descriptionBufferSize] = {};
        std::va_list arguments;
        va_start(arguments, format);
        std::vsnprintf(description, sizeof(description), format, arguments);
        va_end(arguments);
        return Exception(description, sourceFileName, sourceLine, Exception::typeName);
    }

private:
    const char *sourceFileName;
    unsigned sourceLine;
};

} // namespace GenICam_3_2_TVN
