// SPDX-License-Identifier: MIT
// How a camera is called in a sentence.
#pragma once

#include "Camera.h"
#include "ShownText.h"

#include <string>

namespace fleet {

/// Its serial number, or its identifier where it has none. Bytes as they came.
inline const std::string &nameOf(const Camera &camera)
{
    return camera.serial.empty() ? camera.place.id : camera.serial;
}

/// Name and model, fit to be shown: "A1 (SimCam)".
inline std::string shownName(const Camera &camera)
{
    return shownText(nameOf(camera)) + " (" + shownText(camera.model) + ')';
}

} // namespace fleet
