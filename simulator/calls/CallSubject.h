// SPDX-License-Identifier: MIT
// What a call is about, as far as a failure rule can ask for it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

struct CallSubject
{
    std::string_view function;
    const void *handle = nullptr;         ///< the call's first handle
    std::optional<std::string> id;        ///< the identifier among its arguments
    std::optional<std::uint64_t> address; ///< of a port access
    std::optional<std::int32_t> command;  ///< of an info query
};

} // namespace simulator
