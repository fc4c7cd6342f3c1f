// SPDX-License-Identifier: MIT
// The simulated producer without its call log and its state file, which would be measured along with the
// calls.
#pragma once

#include "Simulator.h"

#include <cstdlib>
#include <string_view>

class SilentSimulator : public Simulator
{
public:
    explicit SilentSimulator(std::string_view toml = oneCamera) : Simulator(toml)
    {
        unsetenv("TORVANE_SIM_LOG");
        unsetenv("TORVANE_SIM_STATE");
    }
};
