// SPDX-License-Identifier: MIT
// Hardware addresses as people write them and as the program does.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace fleet {

/// Reads twelve hexadecimal digits in any usual spelling: "00:11:22:33:44:55", "00-11-22-33-44-55", "0011.2233.4455",
/// "001122334455", in either case.
/// \return the address in the low 48 bits, the first byte the highest; nothing for any other text
std::optional<std::uint64_t> parseMacAddress(std::string_view text);

/// The low 48 bits of \p address as "00:11:22:33:44:55", in lower case.
std::string formatMacAddress(std::uint64_t address);

/// \p address, its first number in the highest 8 bits, as "192.168.0.10".
std::string formatIpAddress(std::uint32_t address);

} // namespace fleet
