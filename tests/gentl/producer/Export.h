// SPDX-License-Identifier: MIT
// What the exported functions of the scripted producer share: each notes its call in the script.
#pragma once

#include "Script.h"

#include <type_traits>

#define EXPORTED extern "C" __attribute__((visibility("default")))

template <class Argument>
std::string numberOf(Argument argument)
{
    if constexpr (std::is_pointer_v<Argument>)
        return std::to_string(reinterpret_cast<std::uintptr_t>(argument));
    else
        return std::to_string(argument);
}

template <class... Arguments>
void note(const char *function, Arguments... arguments)
{
    std::string line = std::string(function) + "(";
    [[maybe_unused]] const char *separator = "";
    ((line += separator + numberOf(arguments), separator = ", "), ...);
    torvaneTestScript()->calls.push_back(line + ")");
}
