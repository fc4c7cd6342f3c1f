// SPDX-License-Identifier: MIT
#include "Configuration.h"

#include <algorithm>

namespace simulator {

std::shared_ptr<const InterfaceSettings> findInterface(const Configuration &configuration,
                                                       const std::string &id)
{
    const auto &interfaces = configuration.interfaces;
    const auto found = std::find_if(interfaces.begin(), interfaces.end(),
                                    [&](const auto &candidate) { return candidate->id == id; });
    return found == interfaces.end() ? nullptr : *found;
}

} // namespace simulator
