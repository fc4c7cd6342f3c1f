// SPDX-License-Identifier: MIT
#include "InfoValue.h"

#include "GenTLError.h"

#include <cstring>

namespace simulator {

namespace {

constexpr char hexDigits[] = "0123456789abcdef";

template <class Number>
InfoValue number(INFO_DATATYPE type, Number value)
{
    std::string bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    return {type, bytes};
}

template <class Number>
std::string decimal(const std::string &bytes)
{
    Number value{};
    std::memcpy(&value, bytes.data(), sizeof value);
    return std::to_string(value);
}

std::string hexByte(char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    return {hexDigits[value >> 4], hexDigits[value & 0xf]};
}

} // namespace

InfoValue InfoValue::text(std::string_view value)
{
    return {INFO_DATATYPE_STRING, std::string(value) + '\0'};
}

InfoValue InfoValue::int32(std::int32_t value)
{
    return number(INFO_DATATYPE_INT32, value);
}

InfoValue InfoValue::uint32(std::uint32_t value)
{
    return number(INFO_DATATYPE_UINT32, value);
}

InfoValue InfoValue::uint64(std::uint64_t value)
{
    return number(INFO_DATATYPE_UINT64, value);
}

InfoValue InfoValue::size(std::size_t value)
{
    return number(INFO_DATATYPE_SIZET, value);
}

InfoValue InfoValue::boolean(bool value)
{
    return number(INFO_DATATYPE_BOOL8, static_cast<bool8_t>(value));
}

InfoValue InfoValue::buffer(std::string value)
{
    return {INFO_DATATYPE_BUFFER, std::move(value)};
}

std::string describe(const InfoValue &value)
{
    switch (value.type) {
    case INFO_DATATYPE_STRING:
        return quoted(std::string_view(value.bytes).substr(0, value.bytes.size() - 1));
    case INFO_DATATYPE_INT32:
        return decimal<std::int32_t>(value.bytes);
    case INFO_DATATYPE_UINT32:
        return decimal<std::uint32_t>(value.bytes);
    case INFO_DATATYPE_UINT64:
        return decimal<std::uint64_t>(value.bytes);
    case INFO_DATATYPE_SIZET:
        return decimal<std::size_t>(value.bytes);
    case INFO_DATATYPE_BOOL8:
        return decimal<bool8_t>(value.bytes);
    default:
        return hexBytes(value.bytes.data(), value.bytes.size());
    }
}

std::string quoted(std::string_view text)
{
    std::string result = "\"";
    for (const char byte : text) {
        if (byte == '"' || byte == '\\')
            result += '\\';
        if (static_cast<unsigned char>(byte) < 0x20)
            result += "\\x" + hexByte(byte);
        else
            result += byte;
    }
    return result + '"';
}

std::string hexBytes(const void *data, std::size_t size)
{
    constexpr std::size_t longest = 64;
    constexpr std::size_t shown = 16;
    const std::string_view bytes(static_cast<const char *>(data), size > longest ? shown : size);
    std::string result = "[";
    for (const char byte : bytes)
        result += (result.size() > 1 ? " " : "") + hexByte(byte);
    if (size > longest)
        result += " ... " + std::to_string(size) + " bytes";
    return result + ']';
}

void deliver(const std::string &bytes, void *buffer, std::size_t *size)
{
    require(size, "the pointer to the size");
    if (!buffer) {
        *size = bytes.size();
        return;
    }
    if (*size < bytes.size())
        throw GenTLError(GC_ERR_BUFFER_TOO_SMALL, "the buffer has " + std::to_string(*size) + " bytes; " +
                                                      std::to_string(bytes.size()) + " are needed");
    std::memcpy(buffer, bytes.data(), bytes.size());
    *size = bytes.size();
}

} // namespace simulator
