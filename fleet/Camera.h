// SPDX-License-Identifier: MIT
// One camera as a run knows it: what the tree of producers tells without opening anything, and what a look adds. The
// words of the enumerations, by which scripts know them, are those of wordOf.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class Device;

namespace fleet {

enum class Access
{
    Free,
    Held, // by another program, or by this host
    ReadOnly,
    Unreachable, // the producer sees it, but not so that it could be opened
    Unknown
};

enum class Lock
{
    Locked,
    Unlocked,
    None, // the camera says that it has no such register
    Unknown
};

enum class Password
{
    Factory,
    User,
    None, // there is no lock
    Unknown
};

enum class ReasonCode
{
    Held,
    ReadOnly,
    NoLock,
    Unreachable,
    WrongPassword,
    Unlocked,
    WriteFailed,
    ReadFailed,
    Vanished,
    NoSecret,
    SharedSerial,
    Rule,
    Journal,
    Vault,
    NotReached,
    Producer
};

/// Why something is as it is, and what to do next.
struct Reason
{
    ReasonCode code;
    std::string text; ///< a sentence; with the producer's words where there are some, as they came
    std::string next; ///< a sentence for the user; may be empty
};

/// Which entry of the tree: unique within one run.
struct Place
{
    std::string producer;  ///< path of the .cti file
    std::string interface; ///< GenTL's identifier
    std::string id;        ///< GenTL's identifier of the device

    friend bool operator==(const Place &, const Place &) = default;
};

/// Texts are bytes as the producer gave them; nothing has been made fit to be shown.
struct Camera
{
    Device *device = nullptr; ///< of the tree, which owns it
    Place place;
    std::string model;
    std::string serial;
    std::optional<std::string> userName; ///< nothing where the producer does not tell

    Access access = Access::Unknown;

    // By a look.
    bool wasLooked = false; ///< it has been open and was read
    std::optional<std::uint32_t> ip;
    std::optional<std::uint64_t> mac;
    std::optional<std::string> firmware;
    Lock lock = Lock::Unknown;
    Password password = Password::Unknown;
    std::optional<Reason> reason; ///< why something is not known

    /// The entry that comes first of those that are this camera.
    std::optional<Place> duplicateOf;
};

const char *wordOf(Access access);
const char *wordOf(Lock lock);
const char *wordOf(Password password);
const char *wordOf(ReasonCode code);

} // namespace fleet
