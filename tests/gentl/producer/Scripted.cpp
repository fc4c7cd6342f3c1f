// SPDX-License-Identifier: MIT
// The functions of the scripted producer that answer as the script says.
#include "Export.h"

#include <algorithm>
#include <cstring>

namespace {

Script &script()
{
    return *torvaneTestScript();
}

GC_ERROR answerText(const std::string &text, void *buffer, std::size_t *size)
{
    const std::size_t needed = text.size() + 1;
    if (buffer && *size < needed)
        return GC_ERR_BUFFER_TOO_SMALL;
    if (buffer)
        std::memcpy(buffer, text.c_str(), needed);
    *size = needed;
    return GC_ERR_SUCCESS;
}

} // namespace

EXPORTED GC_ERROR GCGetInfo(TL_INFO_CMD command, INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    if (script().recordsOnly)
        return record(__func__, command, type, buffer, size);
    note(__func__, command, *type, *size);
    const bool isMajor = command == TL_INFO_GENTL_VER_MAJOR;
    std::memcpy(buffer, isMajor ? &script().major : &script().minor, sizeof(std::uint32_t));
    return isMajor ? script().majorCode : script().minorCode;
}

EXPORTED GC_ERROR GCGetLastError(GC_ERROR *code, char *text, std::size_t *size)
{
    if (script().recordsOnly)
        return record(__func__, code, text, size);
    note(__func__, *size);
    if (script().lastErrorResult != GC_ERR_SUCCESS)
        return script().lastErrorResult;
    *code = script().lastErrorCode;
    return answerText(script().lastErrorText, text, size);
}

EXPORTED GC_ERROR GCInitLib()
{
    note(__func__);
    return script().recordsOnly ? script().recordedCode : script().initCode;
}

EXPORTED GC_ERROR GCCloseLib()
{
    note(__func__);
    return script().recordsOnly ? script().recordedCode : script().closeCode;
}

EXPORTED GC_ERROR GCReadPort(PORT_HANDLE port, std::uint64_t address, void *buffer, std::size_t *size)
{
    if (script().recordsOnly)
        return record(__func__, port, address, buffer, size);
    note(__func__, port, address, *size);
    if (script().portCode != GC_ERR_SUCCESS)
        return script().portCode;
    *size = std::min(*size, script().memory.size());
    std::memcpy(buffer, script().memory.data(), *size);
    *size = script().claimedSize.value_or(*size);
    return GC_ERR_SUCCESS;
}

EXPORTED GC_ERROR GCWritePort(PORT_HANDLE port, std::uint64_t address, const void *buffer, std::size_t *size)
{
    if (script().recordsOnly)
        return record(__func__, port, address, buffer, size);
    note(__func__, port, address, *size);
    script().written.assign(static_cast<const char *>(buffer), *size);
    return script().portCode;
}

EXPORTED GC_ERROR GCGetPortInfo(PORT_HANDLE port, PORT_INFO_CMD command, INFO_DATATYPE *type, void *buffer,
                                std::size_t *size)
{
    if (script().recordsOnly)
        return record(__func__, port, command, type, buffer, size);
    note(__func__, port, command, *type, *size);
    if (const auto code = script().portInfoCodes.find(command); code != script().portInfoCodes.end())
        return code->second;
    if (command == PORT_INFO_PORTNAME)
        return answerText(script().portName, buffer, size);
    *static_cast<bool8_t *>(buffer) = script().rights[command];
    return GC_ERR_SUCCESS;
}

EXPORTED GC_ERROR GCGetPortURLInfo(PORT_HANDLE port, std::uint32_t index, URL_INFO_CMD command,
                                   INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    if (script().recordsOnly)
        return record(__func__, port, index, command, type, buffer, size);
    note(__func__, port, index, command, *type, *size);
    const auto answer = script().urlAnswers.find(command);
    if (answer == script().urlAnswers.end())
        return script().urlCode;
    if (const auto *text = std::get_if<std::string>(&answer->second))
        return answerText(*text, buffer, size);
    if (const auto *number = std::get_if<std::int32_t>(&answer->second))
        std::memcpy(buffer, number, sizeof *number);
    else
        std::memcpy(buffer, &std::get<std::uint64_t>(answer->second), sizeof(std::uint64_t));
    return GC_ERR_SUCCESS;
}
