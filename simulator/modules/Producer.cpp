// SPDX-License-Identifier: MIT
#include "Producer.h"

#include "CallLog.h"
#include "ConfigurationReader.h"
#include "DefaultCameras.h"
#include "GenTLError.h"
#include "Module.h"
#include "PrivateFile.h"
#include "ProducerName.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <system_error>
#include <thread>
#include <tuple>

namespace simulator {

namespace {

/// Empty when the variable isn't set.
std::string environment(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

} // namespace

Producer &Producer::instance()
{
    static Producer producer;
    return producer;
}

void Producer::readEnvironment()
{
    if (isOpen)
        throw GenTLError(GC_ERR_RESOURCE_IN_USE, "the library is initialized already");
    try {
        CallLog::instance().open(environment("TORVANE_SIM_LOG"));
    } catch (const std::exception &fault) {
        tell(fault);
        throw;
    }
    openStore(environment("TORVANE_SIM_STATE"));

    const std::string path = environment("TORVANE_SIM_CONFIG");
    if (path != configurationPath) {
        failures.replace({});
        configurationPath = path;
    }
    configurationStamp = {};
    if (path.empty())
        configuration_ = readConfiguration(defaultCameras, "default cameras", producerName);
    else
        readConfigurationFile();
}

void Producer::close()
{
    transportLayer.reset();
    isOpen = false;
}

void Producer::requireInitialized() const
{
    if (!isOpen)
        throw GenTLError(GC_ERR_NOT_INITIALIZED, "GCInitLib has not been called");
}

void Producer::reloadConfiguration()
{
    if (configurationPath.empty())
        return;
    try {
        readConfigurationFile();
    } catch (const GenTLError &error) {
        if (transportLayer)
            transportLayer->fireError({error.code(), error.what()});
        throw;
    }
    if (transportLayer)
        transportLayer->dropUnplugged();
}

void Producer::readConfigurationFile()
{
    try {
        loadConfigurationFile();
        toldFault.clear();
    } catch (const std::exception &fault) { // one that can't be read is a std::system_error
        tell(fault);
        throw;
    }
}

// Most programs show no more than the code of a call. A list that is refreshed once a second meets the fault again each
// time.
void Producer::tell(const std::exception &fault)
{
    if (fault.what() == toldFault)
        return;
    toldFault = fault.what();
    std::fputs((toldFault + '\n').c_str(), stderr);
}

void Producer::loadConfigurationFile()
{
    const FileStamp stamp = fileStamp(configurationPath);
    if (stamp == configurationStamp)
        return;

    const std::optional<std::string> text = readFile(configurationPath);
    if (!text)
        throw GenTLError(GC_ERR_IO, configurationPath + ": it has gone while it was read");
    configuration_ = readConfiguration(*text, configurationPath, producerName);
    failures.replace(configuration_.failures);
    configurationStamp = stamp;
}

void Producer::openStore(const std::string &path)
{
    if (store_ && path == statePath)
        return;
    store_ = path.empty() ? makeMemoryStore() : makeStateFile(path);
    statePath = path;
}

void Producer::strike(const CallSubject &subject)
{
    std::string id = subject.id.value_or("");
    const auto *module = dynamic_cast<const Module *>(handles_.find(subject.handle));
    if (!subject.id && module)
        id = module->id();
    failures.strike(subject, id);
}

bool Producer::isAtLeast(std::uint32_t major, std::uint32_t minor) const
{
    return std::tie(configuration_.versionMajor, configuration_.versionMinor) >= std::tie(major, minor);
}

TransportLayer &Producer::openTransportLayer()
{
    if (transportLayer)
        throw GenTLError(GC_ERR_RESOURCE_IN_USE, "the TL is open already");
    transportLayer = std::make_unique<TransportLayer>(*this);
    return *transportLayer;
}

void Producer::pause(std::int64_t milliseconds)
{
    if (milliseconds == 0)
        return;
    mutex_.unlock();
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    mutex_.lock();
}

void Producer::pauseForUpdate(std::uint64_t timeoutMs)
{
    const auto updateMs = static_cast<std::uint64_t>(configuration_.updateMs);
    pause(static_cast<std::int64_t>(std::min(updateMs, timeoutMs)));
    if (timeoutMs < updateMs)
        throw GenTLError(GC_ERR_TIMEOUT, "the refresh takes " + std::to_string(updateMs) + " ms");
}

} // namespace simulator
