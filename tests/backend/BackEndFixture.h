// SPDX-License-Identifier: MIT
// A back end over the simulated producer, as the tests of this room need it: started and passed at will, with
// what it prints in hand.
#pragma once

#include "BackEnd.h"
#include "Capture.h"
#include "Device.h"
#include "Environment.h"
#include "Simulator.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class BackEndTest : public testing::Test
{
protected:
    BackEndTest();

    /// What \p work prints on standard output, with \p input on standard input.
    static std::string printedBy(const std::function<void()> &work, std::string_view input = "");

    /// Searches for producers and makes one pass.
    /// \return what that printed
    std::string start();
    /// One pass.
    /// \return what it printed
    std::string pass();
    /// Ends the back end.
    /// \return what that printed
    std::string end();

    Device *device(std::size_t place = 0) { return backEnd->devices().at(place); }
    /// The identifiers of the flat list.
    std::vector<std::string> ids() const;
    /// Selects and opens the first device and forgets the calls so far.
    Device *select();

    /// Lets the search find \p variants, in this order and each in a folder of its own.
    void useProducers(const std::vector<std::string> &variants);
    /// Lets the search look into \p folders, separated as in GENICAM_GENTL64_PATH.
    void search(const std::string &folders);
    static std::string folderOf(const std::string &file);

    Simulator simulator;
    std::unique_ptr<Environment> path;
    std::unique_ptr<BackEnd> backEnd = std::make_unique<BackEnd>();
};

/// The lines of \p calls from \p first to \p last by their functions' names, without what else they say.
std::vector<std::string> functionsOf(const std::vector<std::string> &calls);
