// SPDX-License-Identifier: MIT
// The one producer of this module: the state of the library between GCInitLib and GCCloseLib, its
// configuration, the cameras' store, the handles and the TL. Every call runs under its lock.
#pragma once

#include "CallSubject.h"
#include "CameraStore.h"
#include "Configuration.h"
#include "FailureRules.h"
#include "FileStamp.h"
#include "HandleTable.h"
#include "TransportLayer.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace simulator {

/// Thread: any, under mutex().
class Producer
{
public:
    static Producer &instance();

    std::mutex &mutex() { return mutex_; }

    // GCInitLib in its two steps, with the failure rules between them: reads TORVANE_SIM_LOG,
    // TORVANE_SIM_STATE and TORVANE_SIM_CONFIG with the file that it names; then counts the library as
    // initialised.
    /// \throws GenTLError  GC_ERR_RESOURCE_IN_USE: initialised already; GC_ERR_INVALID_VALUE: the
    ///     configuration is wrong; GC_ERR_IO: one of the files can't be opened
    void readEnvironment();
    void open() { isOpen = true; }

    /// GCCloseLib: closes everything that is open.
    void close();

    /// \throws GenTLError  GC_ERR_NOT_INITIALIZED
    void requireInitialized() const;

    /// Reads the configuration anew if its file has changed. Open cameras that are gone lose contact.
    /// \throws GenTLError  GC_ERR_INVALID_VALUE or GC_ERR_IO; the old configuration stands, and the next call
    ///     tries again
    void reloadConfiguration();

    /// Lets an injected failure strike.
    /// \throws GenTLError  what the rule says
    void strike(const CallSubject &subject);

    HandleTable &handles() { return handles_; }
    CameraStore &store() { return *store_; }
    const Configuration &configuration() const { return configuration_; }
    bool isAtLeast(std::uint32_t major, std::uint32_t minor) const;

    /// \throws GenTLError  GC_ERR_RESOURCE_IN_USE: open already
    TransportLayer &openTransportLayer();
    void closeTransportLayer() { transportLayer.reset(); }

    /// Sleeps without the lock, which the caller holds: objects found before may be gone afterwards.
    void pause(std::int64_t milliseconds);

    /// The time that a list refresh takes.
    /// \throws GenTLError  GC_ERR_TIMEOUT: longer than \p timeoutMs
    void pauseForUpdate(std::uint64_t timeoutMs);

private:
    void readConfigurationFile();
    void loadConfigurationFile();
    void tell(const std::exception &fault);
    void openStore(const std::string &path);

    std::mutex mutex_;
    bool isOpen = false;
    HandleTable handles_;
    std::string configurationPath;
    FileStamp configurationStamp; // of the file that stands in configuration_
    Configuration configuration_;
    std::string toldFault; // of the file or the log, on standard error; empty while the file is right
    FailureRules failures;
    std::string statePath;
    std::unique_ptr<CameraStore> store_;
    std::unique_ptr<TransportLayer> transportLayer;
};

} // namespace simulator
