// SPDX-License-Identifier: MIT
// An environment variable for the time of a scope.
#pragma once

#include "System.h"

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

/// Sets the variable, and puts it back as it was at the end of the scope.
class Environment
{
public:
    /// \param value  nothing: unset
    Environment(std::string name, const std::optional<std::string> &value) : name(std::move(name))
    {
        if (const char *old = std::getenv(this->name.c_str()))
            before = old;
        testsystem::setVariable(this->name, value);
    }
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;
    ~Environment() { testsystem::setVariable(name, before); }

private:
    std::string name;
    std::optional<std::string> before;
};
