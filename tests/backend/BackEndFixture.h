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

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The configuration of an interface with \p cameras, locked by hunter22, and further \p keys of its own.
inline std::string interface(const std::string &id, const std::vector<std::string> &cameras,
                             const std::string &keys = "")
{
    std::string toml = "[[interface]]\nid = \"" + id + "\"\n" + keys;
    for (const std::string &camera : cameras)
        toml += "[[interface.camera]]\nid = \"" + camera + "\"\nlock = \"locked\"\n";
    return toml;
}

/// That of one camera "sim-1" as its \p keys say, the first on its interface.
inline std::string camera(const std::string &keys)
{
    return interface("sim-eth0", {}) + "[[interface.camera]]\nid = \"sim-1\"\n" + keys;
}

class BackEndTest : public testing::Test
{
protected:
    // The current directory is searched too: it is one without a producer.
    BackEndTest() { std::filesystem::current_path(simulator.folder()); }

    /// What \p work prints on standard output, with \p input on standard input.
    static std::string printedBy(const std::function<void()> &work, std::string_view input = "")
    {
        FeedInput feed(input);
        CaptureOutput capture;
        work();
        return capture.text();
    }

    /// A new back end searches for producers and makes one pass. This and the next three return what was printed.
    std::string start()
    {
        backEnd = std::make_unique<BackEnd>();
        return printedBy([this] {
            backEnd->discoverLibraries(true);
            backEnd->updateDevices();
        });
    }

    /// The same with other cameras.
    std::string startWith(std::string_view toml)
    {
        backEnd.reset();
        simulator.configure(toml);
        simulator.clearLog();
        return start();
    }

    std::string pass()
    {
        return printedBy([this] { backEnd->updateDevices(); });
    }

    /// Ends the back end.
    std::string end()
    {
        return printedBy([this] { backEnd.reset(); });
    }

    Device *device(std::size_t place = 0) { return backEnd->devices().at(place); }

    /// The identifiers of the flat list.
    std::vector<std::string> ids() const
    {
        std::vector<std::string> result;
        for (const Device *known : backEnd->devices())
            result.push_back(known->id());
        return result;
    }

    /// Gives the one camera a description of its own, and further \p keys.
    void describe(const std::string &nodes, const std::string &keys = "")
    {
        std::ofstream("own.xml")
            << R"(<RegisterDescription ModelName="m" VendorName="v"><Port Name="Device"/>)" << nodes
            << "</RegisterDescription>";
        simulator.configure(camera("xml = \"own.xml\"\n" + keys));
    }

    /// Selects and opens the first device and forgets the calls so far.
    Device *select()
    {
        start();
        backEnd->selectDevice(device());
        simulator.clearLog();
        return device();
    }

    /// Lets \p function fail with -1010 and the text "no", see Simulator::failNth.
    void fail(std::string_view function, std::uint64_t n = 1, std::uint64_t count = 1,
              const std::string &conditions = "")
    {
        simulator.failNth(function, -1010, n, count, conditions + "text = \"no\"\n");
    }

    /// The lines that tell of such a failure.
    static std::string failed(const std::string &call, const std::string &severity = "ERROR")
    {
        return severity + ": " + call + " failed with code -1010!\n         Msg: no\n";
    }

    static std::string folderOf(const std::string &file)
    {
        return std::filesystem::path(file).parent_path().string();
    }

    /// Lets the search look into \p folders, separated as in GENICAM_GENTL64_PATH.
    static void search(const std::string &folders)
    {
        testsystem::setVariable("GENICAM_GENTL64_PATH", folders);
    }

    Simulator simulator;
    const Environment path{"GENICAM_GENTL64_PATH", folderOf(Simulator::cti())};
    std::unique_ptr<BackEnd> backEnd = std::make_unique<BackEnd>();
};

/// The names of the functions in lines of the call log.
inline std::vector<std::string> functionsOf(std::vector<std::string> calls)
{
    for (std::string &call : calls)
        call.erase(call.find('('));
    return calls;
}
