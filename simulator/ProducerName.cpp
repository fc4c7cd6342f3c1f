// SPDX-License-Identifier: MIT
// The one source that differs between the product and the variants of the tests: the build gives the name.
#include "ProducerName.h"

namespace simulator {

const char *const producerName = TORVANE_SIM_PRODUCER_NAME;

} // namespace simulator
