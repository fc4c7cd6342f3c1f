// SPDX-License-Identifier: MIT
// The scripted producer: its functions note their calls in the script and answer as it says. It does not tell its version,
// so that it needs no more functions than the tests call.
#include "LoadedModule.h"
#include "Script.h"

#include <algorithm>
#include <cstring>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

/// That of the program which has loaded this module.
Script &script()
{
    using Find = Script *(*)();
    static const auto find = reinterpret_cast<Find>(testsystem::programSymbol("torvaneTestScript"));
    return *find();
}

template <class... Arguments>
void note(const char *function, Arguments... arguments)
{
    std::string line = std::string(function) + "(";
    [[maybe_unused]] const char *separator = "";
    ((line += separator + std::to_string(arguments), separator = ", "), ...);
    script().calls.push_back(line + ")");
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

EXPORTED GC_ERROR GCGetInfo(TL_INFO_CMD /*command*/, INFO_DATATYPE * /*type*/, void * /*buffer*/,
                            std::size_t * /*size*/)
{
    return GC_ERR_NOT_IMPLEMENTED;
}

EXPORTED GC_ERROR GCInitLib()
{
    return GC_ERR_SUCCESS;
}

EXPORTED GC_ERROR GCCloseLib()
{
    return GC_ERR_SUCCESS;
}

EXPORTED GC_ERROR GCGetLastError(GC_ERROR *code, char *text, std::size_t *size)
{
    note(__func__, *size);
    *code = GC_ERR_IO;
    return answerText(script().lastErrorText, text, size);
}

EXPORTED GC_ERROR GCReadPort(PORT_HANDLE port, std::uint64_t address, void *buffer, std::size_t *size)
{
    note(__func__, reinterpret_cast<std::uintptr_t>(port), address, *size);
    if (script().portCode != GC_ERR_SUCCESS)
        return script().portCode;
    *size = std::min(*size, script().memory.size());
    std::memcpy(buffer, script().memory.data(), *size);
    *size = script().claimedSize.value_or(*size);
    return GC_ERR_SUCCESS;
}

EXPORTED GC_ERROR GCWritePort(PORT_HANDLE port, std::uint64_t address, const void *buffer, std::size_t *size)
{
    note(__func__, reinterpret_cast<std::uintptr_t>(port), address, *size);
    script().memory.assign(static_cast<const char *>(buffer), *size);
    return script().portCode;
}

EXPORTED GC_ERROR GCGetPortInfo(PORT_HANDLE port, PORT_INFO_CMD command, INFO_DATATYPE *type, void *buffer,
                                std::size_t *size)
{
    note(__func__, reinterpret_cast<std::uintptr_t>(port), command, *type, *size);
    if (command == script().refusedPortInfo)
        return GC_ERR_ERROR;
    if (command == PORT_INFO_PORTNAME)
        return answerText(script().portName, buffer, size);
    *static_cast<bool8_t *>(buffer) = script().rights[command];
    return GC_ERR_SUCCESS;
}

EXPORTED GC_ERROR GCGetPortURLInfo(PORT_HANDLE port, std::uint32_t index, URL_INFO_CMD command,
                                   INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    note(__func__, reinterpret_cast<std::uintptr_t>(port), index, command, *type, *size);
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
