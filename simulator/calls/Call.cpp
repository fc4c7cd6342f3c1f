// SPDX-License-Identifier: MIT
#include "Call.h"

#include "CallLog.h"
#include "LastError.h"

#include <cstdio>
#include <new>
#include <system_error>

namespace simulator {

namespace {

std::string handleName(const void *handle)
{
    if (!handle)
        return "null";
    const std::optional<std::uint64_t> number = HandleTable::numberOf(handle);
    return number ? "h" + std::to_string(*number) : "h?";
}

std::string hexNumber(std::uint64_t value)
{
    char text[2 + 16 + 1];
    std::snprintf(text, sizeof text, "0x%llx", static_cast<unsigned long long>(value));
    return text;
}

} // namespace

void Call::appendArgument(std::string_view text)
{
    if (!CallLog::instance().isOpen())
        return;
    if (!arguments.empty())
        arguments += ", ";
    arguments += text;
}

void Call::argument(Handle handle)
{
    if (!subject.handle)
        subject.handle = handle.value;
    appendArgument(handleName(handle.value));
}

void Call::argument(Id id)
{
    if (id.value)
        subject.id = id.value;
    appendArgument(id.value ? quoted(id.value) : "null");
}

void Call::argument(Address address)
{
    subject.address = address.value;
    appendArgument(hexNumber(address.value));
}

void Call::argument(Command command)
{
    subject.command = command.value;
    appendArgument(std::to_string(command.value));
}

void Call::argument(Number number)
{
    appendArgument(std::to_string(number.value));
}

void Call::argument(Size size)
{
    appendArgument(size.value ? std::to_string(*size.value) : "null");
}

void Call::argument(Timeout timeout)
{
    appendArgument(timeout.value == GENTL_INFINITE ? "infinite" : std::to_string(timeout.value));
}

void Call::argument(Buffer buffer)
{
    if (!buffer.value)
        appendArgument("null");
}

void Call::argument(std::string_view text)
{
    appendArgument(text);
}

void Call::output(Handle handle)
{
    output(handleName(handle.value));
}

void Call::output(Number number)
{
    output(std::to_string(number.value));
}

void Call::output(std::string_view text)
{
    if (!CallLog::instance().isOpen())
        return;
    outputs += ' ';
    outputs += text;
}

void Call::outputInfo(const InfoValue &value, INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    require(type, "the pointer to the data type");
    deliver(value.bytes, buffer, size);
    *type = value.type;
    output(buffer ? describe(value) : std::to_string(*size));
}

void Call::outputText(std::string_view text, char *buffer, std::size_t *size)
{
    INFO_DATATYPE type = INFO_DATATYPE_UNKNOWN;
    outputInfo(InfoValue::text(text), &type, buffer, size);
}

GC_ERROR Call::rememberException() noexcept
{
    GC_ERROR code = GC_ERR_ERROR;
    try {
        throw;
    } catch (const GenTLError &error) {
        code = error.code();
        rememberError(code, error.what());
    } catch (const std::bad_alloc &) {
        code = GC_ERR_OUT_OF_MEMORY;
        rememberError(code, "no memory");
    } catch (const std::system_error &error) {
        code = GC_ERR_IO;
        rememberError(code, error.what());
    } catch (const std::exception &error) {
        rememberError(code, error.what());
    } catch (...) {
        rememberError(code, "unknown exception");
    }
    return code;
}

void Call::log(GC_ERROR code) noexcept
try {
    CallLog &log = CallLog::instance();
    if (!log.isOpen() || hasFailed)
        return;
    std::string line(subject.function);
    line += '(' + arguments + ") = " + std::to_string(code);
    if (code == GC_ERR_SUCCESS)
        line += outputs;
    log.write(std::move(line));
} catch (...) {
    // Without memory for the line, the line is missing; the call's answer stands.
}

} // namespace simulator
