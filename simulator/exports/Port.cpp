// SPDX-License-Identifier: MIT
// Ports: register access, one by one and stacked, and where the description stands. Every module is a port.
#include "Call.h"
#include "Exports.h"
#include "Registers.h"

#include <cstring>

using namespace simulator;

namespace {

/// The module of a port, and the description behind it.
/// \throws GenTLError  GC_ERR_INVALID_INDEX: the port has no URL of that index
const Module &portWithUrl(Producer &producer, PORT_HANDLE port, std::uint32_t index)
{
    const auto &module = producer.handles().get<Module>(port);
    if (!module.description() || index > 0)
        throw GenTLError(GC_ERR_INVALID_INDEX, "the port has no URL " + std::to_string(index));
    return module;
}

InfoValue urlInfo(URL_INFO_CMD command, const Module &module)
{
    const Description &description = *module.description();
    switch (command) {
    case URL_INFO_URL:
        return InfoValue::text(module.url());
    case URL_INFO_SCHEMA_VER_MAJOR:
    case URL_INFO_SCHEMA_VER_MINOR:
    case URL_INFO_FILE_VER_MAJOR:
        return InfoValue::int32(1);
    case URL_INFO_FILE_VER_MINOR:
    case URL_INFO_FILE_VER_SUBMINOR:
        return InfoValue::int32(0);
    case URL_INFO_FILE_SHA1_HASH:
        throw GenTLError(GC_ERR_NOT_AVAILABLE, "no hash is kept of the description");
    case URL_INFO_FILE_REGISTER_ADDRESS:
        return InfoValue::uint64(descriptionAddress);
    case URL_INFO_FILE_SIZE:
        return InfoValue::uint64(description.content.size());
    case URL_INFO_SCHEME:
        return InfoValue::int32(URL_SCHEME_LOCAL);
    case URL_INFO_FILENAME:
        return InfoValue::text(description.fileName);
    default:
        throw GenTLError(GC_ERR_INVALID_PARAMETER, "unknown URL query " + std::to_string(command));
    }
}

void requireData(const void *buffer, const std::size_t *size)
{
    require(buffer, "the buffer");
    require(size, "the pointer to the size");
    if (*size == 0)
        throw GenTLError(GC_ERR_INVALID_PARAMETER, "the size is 0");
}

/// Reads into the caller's buffer, after the time that the transport takes.
void readPort(Producer &producer, PORT_HANDLE port, std::uint64_t address, void *buffer, std::size_t size)
{
    producer.handles().get<Module>(port);
    producer.pause(producer.configuration().latencyMs);
    const std::string bytes = producer.handles().get<Module>(port).read(address, size);
    std::memcpy(buffer, bytes.data(), bytes.size());
}

void writePort(Producer &producer, PORT_HANDLE port, std::uint64_t address, const void *buffer,
               std::size_t size)
{
    producer.handles().get<Module>(port);
    producer.pause(producer.configuration().latencyMs);
    producer.handles().get<Module>(port).write(address, {static_cast<const char *>(buffer), size});
}

/// Runs \p access on the entries one by one up to the first failure, and stores how many went well.
template <class Access>
void runStack(PORT_REGISTER_STACK_ENTRY *entries, std::size_t *count, Access access)
{
    require(entries, "the list of entries");
    require(count, "the pointer to the count");
    const std::size_t size = *count;
    for (*count = 0; *count < size; ++*count) {
        const PORT_REGISTER_STACK_ENTRY entry = entries[*count];
        requireData(entry.pBuffer, &entry.Size);
        access(entry);
    }
}

} // namespace

GC_ERROR GCReadPort(PORT_HANDLE port, std::uint64_t address, void *buffer, std::size_t *size)
{
    Call call{"GCReadPort", Handle{port}, Address{address}, Size{size}};
    return call.answer([&](Producer &producer) {
        requireData(buffer, size);
        readPort(producer, port, address, buffer, *size);
        call.output(hexBytes(buffer, *size));
    });
}

GC_ERROR GCWritePort(PORT_HANDLE port, std::uint64_t address, const void *buffer, std::size_t *size)
{
    Call call{"GCWritePort", Handle{port}, Address{address}, Size{size}};
    return call.answer([&](Producer &producer) {
        requireData(buffer, size);
        writePort(producer, port, address, buffer, *size);
        call.output(hexBytes(buffer, *size));
    });
}

GC_ERROR GCReadPortStacked(PORT_HANDLE port, PORT_REGISTER_STACK_ENTRY *entries, std::size_t *count)
{
    Call call{"GCReadPortStacked", Handle{port}, Size{count}};
    return call.answer([&](Producer &producer) {
        runStack(entries, count, [&](const PORT_REGISTER_STACK_ENTRY &entry) {
            readPort(producer, port, entry.Address, entry.pBuffer, entry.Size);
            call.output(hexBytes(entry.pBuffer, entry.Size));
        });
    });
}

GC_ERROR GCWritePortStacked(PORT_HANDLE port, PORT_REGISTER_STACK_ENTRY *entries, std::size_t *count)
{
    Call call{"GCWritePortStacked", Handle{port}, Size{count}};
    return call.answer([&](Producer &producer) {
        runStack(entries, count, [&](const PORT_REGISTER_STACK_ENTRY &entry) {
            writePort(producer, port, entry.Address, entry.pBuffer, entry.Size);
            call.output(hexBytes(entry.pBuffer, entry.Size));
        });
    });
}

GC_ERROR GCGetPortInfo(PORT_HANDLE port, PORT_INFO_CMD command, INFO_DATATYPE *type, void *buffer,
                       std::size_t *size)
{
    Call call{"GCGetPortInfo", Handle{port}, Command{command}, Buffer{buffer}};
    return call.answer([&](Producer &producer) {
        call.outputInfo(producer.handles().get<Module>(port).portInfo(command), type, buffer, size);
    });
}

GC_ERROR GCGetPortURL(PORT_HANDLE port, char *url, std::size_t *size)
{
    Call call{"GCGetPortURL", Handle{port}, Buffer{url}};
    return call.answer([&](Producer &producer) {
        const auto &module = producer.handles().get<Module>(port);
        if (!module.description())
            throw GenTLError(GC_ERR_NOT_AVAILABLE, "the port has no description");
        call.outputText(module.url(), url, size);
    });
}

GC_ERROR GCGetNumPortURLs(PORT_HANDLE port, std::uint32_t *count)
{
    Call call{"GCGetNumPortURLs", Handle{port}};
    return call.answer([&](Producer &producer) {
        const auto &module = producer.handles().get<Module>(port);
        require(count, "the pointer to the count");
        *count = module.description() ? 1 : 0;
        call.output(Number{*count});
    });
}

GC_ERROR GCGetPortURLInfo(PORT_HANDLE port, std::uint32_t index, URL_INFO_CMD command, INFO_DATATYPE *type,
                          void *buffer, std::size_t *size)
{
    Call call{"GCGetPortURLInfo", Handle{port}, Number{index}, Command{command}, Buffer{buffer}};
    return call.answer([&](Producer &producer) {
        call.outputInfo(urlInfo(command, portWithUrl(producer, port, index)), type, buffer, size);
    });
}
