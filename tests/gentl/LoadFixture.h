// SPDX-License-Identifier: MIT
// Loading producers from a folder of the test's own, the current one, which is empty but for the simulator's files.
#pragma once

#include "GenTL_Interface.h"
#include "Script.h"
#include "Simulator.h"

#include <gmock/gmock.h>

#include <filesystem>

class LoadTest : public testing::Test
{
protected:
    LoadTest() { std::filesystem::current_path(simulator.folder()); }

    /// What the load of the producer at \p path throws, or "no exception".
    static std::string loadFailure(const std::string &path)
    {
        return failureOf([&] { GenICam_Interfaces::GenTL_Interface gentl(path); });
    }

    Simulator simulator;
};
