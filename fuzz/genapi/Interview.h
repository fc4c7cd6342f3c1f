// SPDX-License-Identifier: MIT
// Asks a node all that its interfaces answer, and writes to it. An answer is a value or the words of a refusal, so
// that two node maps can be compared. Whatever else a node throws ends the process.
#pragma once

#include "INode.h"

#include <string>
#include <vector>

/// One text for each question, "Gain GetMax: refused: ...". Nothing in the node map or the device changes.
/// \param ignoreCache  ask the device also for what is cached
std::vector<std::string> answersOf(GenApi_3_2_TVN::INode &node, bool ignoreCache);

/// Writes to the node by each interface that it has.
void change(GenApi_3_2_TVN::INode &node);
