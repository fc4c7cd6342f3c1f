// SPDX-License-Identifier: MIT
// What the rules say of a new password.
#pragma once

#include <cstdint>

enum class PasswordCheck : std::uint32_t
{
    PasswordOk = 0,
    PasswordTooShort = 1,
    PasswordTooLong = 2,
    PasswordIsDefault = 3,
    PasswordUsedBefore = 4,
};
