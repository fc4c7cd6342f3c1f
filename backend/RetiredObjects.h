// SPDX-License-Identifier: MIT
// Objects of the tree that have vanished and been closed, but not yet freed: the window may still hold a
// pointer to one, and no new object may take its address while it can be compared.
#pragma once

#include <memory>
#include <vector>

/// Clearing or destroying the list frees them. They do nothing in their destructors but release memory and
/// shares.
using RetiredObjects = std::vector<std::shared_ptr<const void>>;
