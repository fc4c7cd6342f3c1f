// SPDX-License-Identifier: MIT
// What the tests do with a feature, whatever its kind.
#pragma once

#include "CPointer.h"

#include <cstdint>
#include <string>
#include <variant>

using AnyValue = std::variant<std::int64_t, double, bool, std::string>;

/// Of an enumeration its number, of a register without a value its bytes.
AnyValue valueOf(GenApi_3_2_TVN::INode *node, bool verify = false, bool ignoreCache = false);

/// \param which  "min", "max" or "inc"
AnyValue limitOf(GenApi_3_2_TVN::INode *node, const std::string &which);

/// \param value  for a Boolean "true" or "false", for a Command, which is executed, anything
void write(GenApi_3_2_TVN::INode *node, const std::string &value, bool verify = true);

/// Such as "RO".
std::string modeOf(const GenApi_3_2_TVN::CNodePtr &node);
