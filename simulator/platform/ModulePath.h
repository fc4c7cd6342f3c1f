// SPDX-License-Identifier: MIT
// Where this module was loaded from: the answer of TL_INFO_PATHNAME.
#pragma once

#include <string>

namespace simulator {

/// The full path of the .cti file in UTF-8; empty when the system can't tell. Thread: any.
std::string modulePath();

} // namespace simulator
