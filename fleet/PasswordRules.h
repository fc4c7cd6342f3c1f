// SPDX-License-Identifier: MIT
// The rules for a new password, all of them judged before anything is written.
#pragma once

#include "Camera.h"
#include "Secret.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fleet {

/// The password that cameras leave the factory with. It is sent to cameras that say they are on it, and to no other.
inline constexpr const char *factoryPassword = "mapleoak";

/// Of any password, in bytes: the size of the camera's register.
inline constexpr std::size_t longestPassword = 64;

/// Why \p next must not become the password: under 3 or over 64 bytes, a zero byte or a line end in it, the factory's
/// password, or the one in force. Nothing where it may.
/// \param current  null where it is not known
std::optional<Reason> ruleFault(const Secret &next, const Secret *current);

/// For each of \p secrets that another camera is to get too, its place there and the reason. Null entries count for
/// nothing.
std::vector<std::pair<std::size_t, Reason>> sharedSecretFaults(const std::vector<const Secret *> &secrets);

} // namespace fleet
