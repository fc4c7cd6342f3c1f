// SPDX-License-Identifier: MIT
// The name by which a configuration tells the product and its variants apart.
#pragma once

namespace simulator {

/// "torvane_sim" in the product. Interfaces and failures whose key `producer` has another name are left out.
extern const char *const producerName;

} // namespace simulator
