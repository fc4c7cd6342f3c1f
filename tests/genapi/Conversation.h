// SPDX-License-Identifier: MIT
// Questions to a camera in words and its answers as text, so that the tables in conversations/ can hold both.
#pragma once

#include "Camera.h"

#include <string>

/// A line for \p camera: an action, a node where it needs one, and behind that a value. conversations/README tells them.
/// \return the value that came back or the text of the refusal; empty for what only acts
std::string answer(Camera &camera, const std::string &line);
