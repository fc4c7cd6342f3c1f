// SPDX-License-Identifier: MIT
#include "Environment.h"

#include <cstdlib>
#include <utility>

namespace {

void setVariable(const std::string &name, const std::optional<std::string> &value)
{
    if (value)
        setenv(name.c_str(), value->c_str(), 1);
    else
        unsetenv(name.c_str());
}

} // namespace

Environment::Environment(std::string name, const std::optional<std::string> &value) : name(std::move(name))
{
    if (const char *old = std::getenv(this->name.c_str()))
        before = old;
    setVariable(this->name, value);
}

Environment::~Environment()
{
    setVariable(name, before);
}
