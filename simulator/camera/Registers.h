// SPDX-License-Identifier: MIT
// The register map of a simulated camera, also documented in docs/simulator.md.
#pragma once

#include <cstddef>
#include <cstdint>

namespace simulator {

struct Register
{
    std::uint64_t address;
    std::size_t size; ///< bytes
};

// The password lock. Values are 32-bit integers in the byte order of the host; never change.
inline constexpr Register RegLockState{0x50001000, 4};
inline constexpr Register RegPasswordState{0x50001004, 4};
inline constexpr Register RegCommand{0x50001008, 4};
inline constexpr Register RegNewPassword{0x50002000, 64};
inline constexpr Register RegUnlockPassword{0x50002040, 64};

inline constexpr std::uint32_t CmdLock = 1;
inline constexpr std::uint32_t CmdFactoryReset = 0x80;

// What the description refers to: the places of GigE Vision's bootstrap registers, on every transport.
inline constexpr Register RegMacAddress{0x0008, 8}; // high and low word
inline constexpr Register RegCurrentIp{0x0024, 4};
inline constexpr Register RegVendorName{0x0048, 32};
inline constexpr Register RegModelName{0x0068, 32};
inline constexpr Register RegDeviceVersion{0x0088, 32};
inline constexpr Register RegSerialNumber{0x00d8, 16};
inline constexpr Register RegUserName{0x00e8, 16};

// The simulator's own features.
inline constexpr Register RegReverseX{0x60000000, 4};
inline constexpr Register RegTimestampLatch{0x60000004, 4}; // write 1; reads 0
inline constexpr Register RegTimestampValue{0x60000008, 8}; // nanoseconds

inline constexpr std::uint64_t descriptionAddress = 0xf0000000;

} // namespace simulator
