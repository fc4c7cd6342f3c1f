// SPDX-License-Identifier: MIT
#include "TransportLayer.h"

#include "ModulePath.h"
#include "Producer.h"
#include "ProducerName.h"

#include <algorithm>
#include <filesystem>

namespace simulator {

namespace {

constexpr char vendor[] = "Torvane";
constexpr char model[] = "Simulated cameras";
constexpr char version[] = "1.0.0";

std::string moduleName()
{
    const std::string path = modulePath(); // in UTF-8
    const std::u8string name =
        std::filesystem::path(std::u8string(path.begin(), path.end())).filename().u8string();
    return {name.begin(), name.end()};
}

} // namespace

TransportLayer::TransportLayer(Producer &producer) : Module(producer.handles(), nullptr), producer(producer)
{}

std::string TransportLayer::id() const
{
    return producerName;
}

PortIdentity TransportLayer::port() const
{
    return {.id = id(),
            .vendor = vendor,
            .model = model,
            .tlType = "Mixed",
            .module = "TLSystem",
            .version = version,
            .portName = "TLSystem"};
}

bool TransportLayer::refresh()
{
    const auto &fresh = producer.configuration().interfaces;
    const auto hasSameId = [](const auto &left, const auto &right) { return left->id == right->id; };
    const bool hasChanged =
        !std::equal(interfaces_.begin(), interfaces_.end(), fresh.begin(), fresh.end(), hasSameId);
    interfaces_ = fresh;
    return hasChanged;
}

const std::shared_ptr<const InterfaceSettings> &TransportLayer::find(const std::string &id) const
{
    for (const auto &candidate : interfaces_)
        if (candidate->id == id)
            return candidate;
    throw GenTLError(GC_ERR_INVALID_ID, "no interface \"" + id + "\" in the list");
}

Interface &TransportLayer::open(const std::string &id)
{
    const auto &settings = find(id);
    if (opened.contains(id))
        throw GenTLError(GC_ERR_RESOURCE_IN_USE, "interface \"" + id + "\" is open already");
    return *(opened[id] = std::make_unique<Interface>(producer, *this, settings));
}

void TransportLayer::close(Interface &child)
{
    opened.erase(child.id());
}

void TransportLayer::dropUnplugged()
{
    for (const auto &[id, child] : opened)
        child->dropUnplugged();
}

InfoValue producerInfo(TL_INFO_CMD command, const Configuration &configuration)
{
    switch (command) {
    case TL_INFO_ID:
        return InfoValue::text(producerName);
    case TL_INFO_VENDOR:
        return InfoValue::text(vendor);
    case TL_INFO_MODEL:
        return InfoValue::text(model);
    case TL_INFO_VERSION:
        return InfoValue::text(version);
    case TL_INFO_TLTYPE:
        return InfoValue::text("Mixed");
    case TL_INFO_NAME:
        return InfoValue::text(moduleName());
    case TL_INFO_PATHNAME:
        return InfoValue::text(modulePath());
    case TL_INFO_DISPLAYNAME:
        return InfoValue::text("Torvane simulated cameras");
    case TL_INFO_CHAR_ENCODING:
        return InfoValue::int32(TL_CHAR_ENCODING_UTF8);
    case TL_INFO_GENTL_VER_MAJOR:
        return InfoValue::uint32(configuration.versionMajor);
    case TL_INFO_GENTL_VER_MINOR:
        return InfoValue::uint32(configuration.versionMinor);
    default:
        throw GenTLError(GC_ERR_INVALID_PARAMETER, "unknown producer query " + std::to_string(command));
    }
}

InfoValue interfaceInfo(INTERFACE_INFO_CMD command, const InterfaceSettings &settings)
{
    switch (command) {
    case INTERFACE_INFO_ID:
        return InfoValue::text(settings.id);
    case INTERFACE_INFO_DISPLAYNAME:
        return InfoValue::text(settings.name);
    case INTERFACE_INFO_TLTYPE:
        return InfoValue::text(settings.type);
    default:
        throw GenTLError(GC_ERR_INVALID_PARAMETER, "unknown interface query " + std::to_string(command));
    }
}

} // namespace simulator
