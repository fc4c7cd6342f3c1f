// SPDX-License-Identifier: MIT
// Which entries of the tree are one camera, and which are not although they bear the same serial number. A secret goes by
// the serial number: sent to the wrong one of two, it is given away.
#pragma once

#include "Camera.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace fleet {

/// Whether two entries of two interfaces are one camera: by their MAC addresses where both are known, else by serial number
/// and model. An entry without a serial number is like no other but by its MAC address.
bool isSameCamera(const Camera &one, const Camera &other);

/// Sets duplicateOf of each entry that is a camera which stands further up.
void markDuplicates(std::vector<Camera> &cameras);

/// The serial numbers that more than one camera bears, each with the places of its cameras, duplicates left out.
std::map<std::string, std::vector<std::size_t>> sharedSerials(const std::vector<Camera> &cameras);

/// The places of the entries whose serial number and model another one bears too, so that only their MAC addresses can
/// tell whether they are one camera.
std::vector<std::size_t> unclearIdentities(const std::vector<Camera> &cameras);

} // namespace fleet
