// SPDX-License-Identifier: MIT
// The camera's password lock as registers of its remote port. There is no GenApi feature for it, so these are
// raw addresses; they and the values are fixed by the cameras and never change.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// A register of 4 bytes that travels as one integer in the host's byte order.
struct PasswordRegister
{
    std::int64_t address;
    std::int64_t length; ///< bytes
};

inline constexpr PasswordRegister RegLockState{0x50001000, 4}; ///< read: LockStateLocked, else not locked
inline constexpr PasswordRegister RegPasswordState{0x50001004,
                                                   4};       ///< read: PasswordStateDefault, else the user's
inline constexpr PasswordRegister RegCommand{0x50001008, 4}; ///< write: CmdLock or CmdFactoryReset

// Written in one piece, zero-filled to paddedPasswordSize bytes.
inline constexpr std::int64_t RegNewPassword = 0x50002000;
inline constexpr std::int64_t RegUnlockPassword = 0x50002040;

inline constexpr std::uint32_t LockStateLocked = 1;
inline constexpr std::uint32_t PasswordStateDefault = 0;
inline constexpr std::uint32_t CmdLock = 1;
inline constexpr std::uint32_t CmdFactoryReset = 0x80; ///< the camera reboots

/// How many bytes a password of \p size bytes takes on the wire: a multiple of 4, and at least 8.
constexpr std::size_t paddedPasswordSize(std::size_t size)
{
    return std::max<std::size_t>((size + 3) / 4 * 4, 8);
}
