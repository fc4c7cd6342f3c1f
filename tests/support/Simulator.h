// SPDX-License-Identifier: MIT
// The simulated producer as a test has it: a folder of its own with configuration, state and call log, to
// which the environment points as long as the object lives. Loading the module is the test's own business.
#pragma once

#include "Environment.h"
#include "TemporaryFolder.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

class Simulator
{
public:
    /// One locked GEV camera "sim-1" (model "SimCam G5", serial "G5-0001", 192.168.0.11, 00:11:22:33:44:01)
    /// of password "hunter22" on the interface "sim-eth0".
    static const char *const oneCamera;

    explicit Simulator(std::string_view toml = oneCamera);

    /// Rewrites the configuration. The producer reads it at GCInitLib and at its next list refresh.
    void configure(std::string_view toml);

    /// Appends to the configuration: from its \p n-th call on (1: the very first, counted from the next time
    /// the producer reads the configuration) \p function fails \p count times (0: for ever) with \p code.
    /// \param conditions  further lines of the rule, such as "address = 0x50001000\n"
    void failNth(std::string_view function, std::int32_t code, std::uint64_t n, std::uint64_t count = 1,
                 std::string_view conditions = {});

    /// The lines of the call log, all or those of one function.
    std::vector<std::string> calls(std::string_view function = {}) const;
    void clearLog();

    /// The successful accesses to the password registers: "read 0x50001000 01 00 00 00",
    /// "write 0x50002040 68 75 6e 74 65 72 32 32".
    std::vector<std::string> portTraffic() const;

    /// The same in words: what was read, "locked", "unlocked", "default" or "user", and what was written, "LOCK",
    /// "RESET", "TRY:hunter22" or "SET:hunter22".
    std::string lockTraffic() const;

    /// TL, interfaces and devices that were opened and not closed by a call of their own, as of the log.
    int openHandles() const;

    /// The full path of the product, alone in its folder.
    static std::string cti();
    /// That of a variant by its target's name (torvane_add_sim_variant), alone in its folder too.
    static std::string cti(std::string_view variant);

    const std::filesystem::path &folder() const { return folder_.path(); }
    std::filesystem::path configPath() const { return folder() / "cameras.toml"; }
    std::filesystem::path statePath() const { return folder() / "state.toml"; }
    std::filesystem::path logPath() const { return folder() / "calls.log"; }

private:
    const TemporaryFolder folder_;
    std::string toml;
    Environment config;
    Environment state;
    Environment log;
};
