// SPDX-License-Identifier: MIT
// From the text of a configuration to its checked values.
#pragma once

#include "Configuration.h"

#include <string>
#include <string_view>

namespace simulator {

/// \param text  TOML in UTF-8
/// \param file  the path as the user gave it: for the texts of errors, and the folder that a relative path of
///     a description file starts from
/// \param producer  parts meant for producers of another name are checked, then left out
/// \throws GenTLError  GC_ERR_INVALID_VALUE: 'cameras.toml:14: camera "A1": lock = "maybe"; one of ...'
Configuration readConfiguration(std::string_view text, const std::string &file, std::string_view producer);

} // namespace simulator
