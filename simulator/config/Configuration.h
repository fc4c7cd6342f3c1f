// SPDX-License-Identifier: MIT
// What a configuration says, checked and with its defaults filled in: the producer's behaviour, the
// interfaces with their cameras, and the failures to inject. Plain values without behaviour, shared unchanged
// by everything that was made from them.
#pragma once

#include "GenTL.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// What a camera's lock is like as long as no state is kept for it.
enum class LockSetting
{
    Default,  ///< locked, on the factory default password
    Locked,   ///< locked, on a user password
    Unlocked, ///< unlocked, on a user password
    None,     ///< the camera has no lock
};

struct CameraSettings
{
    std::string id;
    std::string model;
    std::string vendor;
    std::string serial;
    std::string userName;
    std::string type; ///< transport layer type: "GEV", "U3V" ...
    std::array<std::uint8_t, 4> ip{};
    std::array<std::uint8_t, 6> mac{};
    std::string firmware;
    LockSetting lock = LockSetting::Locked;
    std::string password; ///< bytes as they stand in the configuration
    DEVICE_ACCESS_STATUS access = DEVICE_ACCESS_STATUS_READWRITE;
    std::int64_t rebootMs = 0;
    std::optional<std::uint32_t> lockStateValue;     ///< what RegLockState reads, whatever the lock
    std::optional<std::uint32_t> passwordStateValue; ///< what RegPasswordState reads, whatever the password
    bool isZipped = false;
    std::optional<std::string> xml; ///< the content of the description file that replaces the built-in one
    std::optional<std::string> url; ///< what URL_INFO_URL answers instead of the right one
    std::string portName;
};

struct InterfaceSettings
{
    std::string id;
    std::string name;
    std::string type;
    std::vector<std::shared_ptr<const CameraSettings>> cameras;
};

/// Calls of one function that fail. Empty members match every call.
struct FailureRule
{
    std::string function;
    GC_ERROR code = GC_ERR_ERROR;
    std::uint64_t first = 1; ///< the first matching call that fails, 1 for the very first
    std::uint64_t count = 1; ///< calls that fail; 0: for ever
    std::optional<std::uint64_t> address;
    std::optional<std::int32_t> command;
    std::optional<std::string> id;
    std::string text;

    bool operator==(const FailureRule &) const = default;
};

struct Configuration
{
    std::uint32_t versionMajor = 1; ///< of GenTL, as GCGetInfo reports it
    std::uint32_t versionMinor = 5;
    std::int64_t latencyMs = 0; ///< of each port access
    std::int64_t updateMs = 0;  ///< of each list refresh
    std::vector<std::shared_ptr<const InterfaceSettings>> interfaces;
    std::vector<FailureRule> failures;
};

/// The factory default password of all simulated cameras.
inline constexpr char factoryPassword[] = "mapleoak";

/// Bytes of the longest password that a camera takes: what its password registers hold.
inline constexpr std::size_t longestPassword = 64;

/// The interface of this identifier, or null.
std::shared_ptr<const InterfaceSettings> findInterface(const Configuration &configuration,
                                                       const std::string &id);

} // namespace simulator
