// SPDX-License-Identifier: MIT
// An environment variable for the time of a scope.
#pragma once

#include <optional>
#include <string>

/// Sets the variable, and puts it back as it was at the end of the scope.
class Environment
{
public:
    /// \param value  nothing: unset
    Environment(std::string name, const std::optional<std::string> &value);
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;
    ~Environment();

private:
    std::string name;
    std::optional<std::string> before;
};
