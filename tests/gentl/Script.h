// SPDX-License-Identifier: MIT
// What the scripted producer answers, and what it was asked. It is a module of its own, loaded as any other,
// and finds the script of the test program by its exported name; so a test can look at it after the module has
// gone.
#pragma once

#include "GenTL.h"

#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

struct Script
{
    std::string lastErrorText = "the link is down"; ///< of GCGetLastError, with the code GC_ERR_IO

    std::map<PORT_INFO_CMD, bool8_t> rights{{PORT_INFO_ACCESS_READ, 1}, {PORT_INFO_ACCESS_WRITE, 1}};
    std::optional<PORT_INFO_CMD> refusedPortInfo;
    std::string portName = "Device";

    /// Answers of GCGetPortURLInfo; what is not here is answered with urlCode.
    std::map<URL_INFO_CMD, std::variant<std::string, std::int32_t, std::uint64_t>> urlAnswers;
    GC_ERROR urlCode = GC_ERR_NOT_IMPLEMENTED;

    GC_ERROR portCode = GC_ERR_SUCCESS; ///< of GCReadPort and GCWritePort
    std::string memory;                 ///< what a read delivers, from whatever address, and a write leaves
    std::optional<std::size_t> claimedSize; ///< what a read tells to have delivered, if not the truth

    /// "NAME(1, 2)": the arguments as numbers, of most pointers the number behind them, none of a buffer.
    std::vector<std::string> calls;
};

/// The one script of a test program. The fixtures of each test begin with a fresh one.
extern "C" Script *torvaneTestScript();

/// The path of the scripted producer.
std::string scriptedProducer();

/// The text of the std::runtime_error that \p action throws, or "no exception".
template <class Action>
std::string failureOf(Action action)
{
    try {
        action();
    } catch (const std::runtime_error &failure) {
        return failure.what();
    }
    return "no exception";
}
