// SPDX-License-Identifier: MIT
// From an element of the description to the node of its kind.
#pragma once

#include "Node.h"

#include <pugixml.hpp>

#include <memory>

namespace GenApi_3_2_TVN {

/// \throws PropertyException  a child that the kind needs is missing or unreadable
std::unique_ptr<Node> makeNode(NodeMap &nodeMap, pugi::xml_node element);

} // namespace GenApi_3_2_TVN
