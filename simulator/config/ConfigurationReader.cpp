// SPDX-License-Identifier: MIT
#include "ConfigurationReader.h"

#include "FunctionNames.h"
#include "GenTLError.h"
#include "PrivateFile.h"
#include "TableReader.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <set>
#include <system_error>

namespace simulator {

namespace {

constexpr std::int64_t longestMs = 3'600'000; // an hour: beyond that it is a slip, not a test

/// Numbers between separators, such as "192.168.0.10"; false when the text has another form.
template <std::size_t count>
bool parseBytes(std::string_view text, char separator, int base, std::array<std::uint8_t, count> &bytes)
{
    const char *position = text.data();
    const char *const end = text.data() + text.size();
    for (std::size_t index = 0; index < count; ++index) {
        if (index > 0 && (position == end || *position++ != separator))
            return false;
        const auto [next, error] = std::from_chars(position, end, bytes[index], base);
        if (error != std::errc())
            return false;
        position = next;
    }
    return position == end;
}

/// A path as it is seen from the folder of \p file. Not by std::filesystem, which takes names that are not ASCII for
/// those of another code page on Windows.
std::string pathBeside(const std::string &file, const std::string &path)
{
    if (std::filesystem::path(path).is_absolute())
        return path;
    const std::string separators{'/', static_cast<char>(std::filesystem::path::preferred_separator)};
    return file.substr(0, file.find_last_of(separators) + 1) + path;
}

/// The content of a description file, whose path starts from the configuration's folder.
std::string readDescription(TableReader &reader, const std::string &file)
{
    const std::string path = reader.requiredText("xml");
    std::optional<std::string> content;
    try {
        content = readFile(pathBeside(file, path));
    } catch (const std::system_error &error) {
        reader.reject("xml", error.code().message());
    }
    if (!content)
        reader.reject("xml", "there is no such file");
    return *content;
}

std::string readPassword(TableReader &reader)
{
    std::string password = reader.text("password", "hunter22");
    if (password.empty() || password.size() > longestPassword)
        reader.reject("password", "1 to 64 bytes are expected");
    return password;
}

std::optional<std::uint32_t> readRegisterValue(TableReader &reader, const char *key)
{
    if (!reader.has(key))
        return std::nullopt;
    return static_cast<std::uint32_t>(reader.integer(key, 0, 0, UINT32_MAX));
}

DEVICE_ACCESS_STATUS readAccess(TableReader &reader)
{
    return reader.choice<DEVICE_ACCESS_STATUS>("access", DEVICE_ACCESS_STATUS_READWRITE,
                                               {{"readwrite", DEVICE_ACCESS_STATUS_READWRITE},
                                                {"readonly", DEVICE_ACCESS_STATUS_READONLY},
                                                {"noaccess", DEVICE_ACCESS_STATUS_NOACCESS},
                                                {"busy", DEVICE_ACCESS_STATUS_BUSY},
                                                {"open_readwrite", DEVICE_ACCESS_STATUS_OPEN_READWRITE},
                                                {"open_readonly", DEVICE_ACCESS_STATUS_OPEN_READONLY},
                                                {"unknown", DEVICE_ACCESS_STATUS_UNKNOWN}});
}

std::shared_ptr<const CameraSettings> readCamera(const toml::table &table, const std::string &file,
                                                 const std::string &interfaceType)
{
    TableReader reader(table, file, "camera");
    auto camera = std::make_shared<CameraSettings>();
    camera->id = reader.requiredText("id");
    reader.rename("camera \"" + camera->id + '"');
    camera->model = reader.text("model", "SimCam");
    camera->vendor = reader.text("vendor", "Torvane");
    camera->serial = reader.text("serial", camera->id);
    camera->userName = reader.text("user_name", "");
    camera->type = reader.text("type", interfaceType);
    if (!parseBytes(reader.text("ip", "192.168.0.10"), '.', 10, camera->ip))
        reader.reject("ip", "an address like \"192.168.0.10\" is expected");
    if (!parseBytes(reader.text("mac", "00:11:22:33:44:55"), ':', 16, camera->mac))
        reader.reject("mac", "an address like \"00:11:22:33:44:55\" is expected");
    camera->firmware = reader.text("firmware", "1.2.3");
    camera->lock = reader.choice<LockSetting>("lock", LockSetting::Locked,
                                              {{"default", LockSetting::Default},
                                               {"locked", LockSetting::Locked},
                                               {"unlocked", LockSetting::Unlocked},
                                               {"none", LockSetting::None}});
    camera->password = readPassword(reader);
    if (camera->lock == LockSetting::Default)
        camera->password = factoryPassword;
    camera->access = readAccess(reader);
    camera->rebootMs = reader.integer("reboot_ms", 5000, 0, longestMs);
    camera->lockStateValue = readRegisterValue(reader, "lock_state_value");
    camera->passwordStateValue = readRegisterValue(reader, "password_state_value");
    camera->isZipped = reader.choice("description", false, {{"plain", false}, {"zipped", true}});
    if (reader.has("xml"))
        camera->xml = readDescription(reader, file);
    if (reader.has("url"))
        camera->url = reader.text("url", "");
    camera->portName = reader.text("port_name", "Device");
    reader.rejectUnknownKeys();
    return camera;
}

/// True when the part is meant for this producer.
bool isMeantFor(TableReader &reader, std::string_view producer)
{
    return reader.text("producer", producer) == producer;
}

std::shared_ptr<const InterfaceSettings> readInterface(const toml::table &table, const std::string &file,
                                                       std::string_view producer)
{
    TableReader reader(table, file, "interface");
    auto result = std::make_shared<InterfaceSettings>();
    result->id = reader.requiredText("id");
    reader.rename("interface \"" + result->id + '"');
    result->name = reader.text("name", result->id);
    result->type = reader.text("type", "GEV");

    std::set<std::string> ids;
    for (const toml::table *cameraTable : reader.tables("camera")) {
        auto camera = readCamera(*cameraTable, file, result->type);
        if (!ids.insert(camera->id).second)
            TableReader(*cameraTable, file, reader.name())
                .reject("id", "another camera of the interface has it already");
        result->cameras.push_back(std::move(camera));
    }
    const bool isMeant = isMeantFor(reader, producer);
    reader.rejectUnknownKeys();
    return isMeant ? result : nullptr;
}

std::optional<FailureRule> readFailure(const toml::table &table, const std::string &file,
                                       std::string_view producer)
{
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t least32 = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t most32 = std::numeric_limits<std::int32_t>::max();

    TableReader reader(table, file, "failure");
    FailureRule rule;
    rule.function = reader.requiredText("function");
    if (std::find(std::begin(functionNames), std::end(functionNames), rule.function) ==
        std::end(functionNames))
        reader.reject("function", "not the name of a GenTL function");
    rule.code = static_cast<GC_ERROR>(reader.integer("code", GC_ERR_ERROR, least32, -1));
    rule.first = static_cast<std::uint64_t>(reader.integer("first", 1, 1, most));
    rule.count = static_cast<std::uint64_t>(reader.integer("count", 1, 0, most));
    if (reader.has("address"))
        rule.address = static_cast<std::uint64_t>(reader.integer("address", 0, 0, most));
    if (reader.has("command"))
        rule.command = static_cast<std::int32_t>(reader.integer("command", 0, 0, most32));
    if (reader.has("id"))
        rule.id = reader.text("id", "");
    rule.text = reader.text("text", "injected failure of " + rule.function);
    const bool isMeant = isMeantFor(reader, producer);
    reader.rejectUnknownKeys();
    return isMeant ? std::optional(rule) : std::nullopt;
}

void readProducer(const toml::table &root, const std::string &file, Configuration &configuration)
{
    const toml::node *node = root.get("producer");
    if (!node)
        return;
    if (!node->is_table())
        TableReader(root, file, "configuration").reject("producer", "write [producer]");

    TableReader reader(*node->as_table(), file, "producer");
    std::array<std::uint8_t, 2> version{};
    if (!parseBytes(reader.text("version", "1.5"), '.', 10, version))
        reader.reject("version", "a version like \"1.5\" is expected");
    configuration.versionMajor = version[0];
    configuration.versionMinor = version[1];
    configuration.latencyMs = reader.integer("latency_ms", 0, 0, longestMs);
    configuration.updateMs = reader.integer("update_ms", 0, 0, longestMs);
    reader.rejectUnknownKeys();
}

toml::table parse(std::string_view text, const std::string &file)
{
    try {
        return toml::parse(text, file);
    } catch (const toml::parse_error &error) {
        throw GenTLError(GC_ERR_INVALID_VALUE,
                         place(file, error.source()) + std::string(error.description()));
    }
}

} // namespace

Configuration readConfiguration(std::string_view text, const std::string &file, std::string_view producer)
{
    const toml::table root = parse(text, file);
    TableReader reader(root, file, "configuration");
    Configuration configuration;
    readProducer(root, file, configuration);

    std::set<std::string> ids;
    for (const toml::table *table : reader.tables("interface")) {
        auto settings = readInterface(*table, file, producer);
        if (!settings)
            continue;
        if (!ids.insert(settings->id).second)
            TableReader(*table, file, "interface").reject("id", "another interface has it already");
        configuration.interfaces.push_back(std::move(settings));
    }
    for (const toml::table *table : reader.tables("failure"))
        if (auto rule = readFailure(*table, file, producer))
            configuration.failures.push_back(std::move(*rule));
    reader.accept("producer");
    reader.rejectUnknownKeys();
    return configuration;
}

} // namespace simulator
