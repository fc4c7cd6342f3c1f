// SPDX-License-Identifier: MIT
// The description file that a camera carries in its register space.
#pragma once

#include "Configuration.h"

#include <string>

namespace simulator {

struct Description
{
    std::string fileName; ///< ends in .xml or .zip
    std::string content;  ///< as it stands in the registers
};

/// The file of the configuration or the built-in one, plain or zipped. It depends on the model and the
/// transport and not on the single camera, so that cameras of one model carry the same bytes.
Description describeCamera(const CameraSettings &settings);

/// "local:///SimCam.xml;F0000000;1A2B?SchemaVersion=1.1.0"
std::string urlOf(const Description &description);

} // namespace simulator
