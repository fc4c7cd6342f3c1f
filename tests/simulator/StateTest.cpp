// SPDX-License-Identifier: MIT
// The state file: what it keeps, and that processes and modules which share it don't get in each other's way.
#include "Client.h"
#include "Environment.h"
#include "Process.h"
#include "System.h"

#include <gmock/gmock.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <regex>
#include <thread>

namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path &path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

using testsystem::Process;

TEST(State, APasswordAndALockStateOutliveTheProcess)
{
    Simulator simulator;
    EXPECT_EQ(Process(SIMULATOR_PEER, {"change"}).wait(), 0);
    for (const fs::path &file : {simulator.statePath(), simulator.logPath()})
        EXPECT_TRUE(testsystem::isPrivate(file)) << file;

    Client client{Simulator::cti()};
    OpenCamera camera{client};
    EXPECT_EQ(client.read(camera.port, lockState, 4), "00 00 00 00");
    client.write(camera.port, commandRegister, lockCommand);
    client.write(camera.port, unlockPassword, "caf\xe9\0\0\0\0"sv);
    EXPECT_EQ(client.read(camera.port, lockState, 4), "00 00 00 00");
}

TEST(State, AHeldCameraIsBusyForOthersUntilItsHolderDies)
{
    Simulator simulator;
    const fs::path sign = simulator.folder() / "held";
    Process holder(SIMULATOR_PEER, {"hold", sign.string()});
    for (int tries = 0; !fs::exists(sign) && tries < 3000; ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));

    Client client{Simulator::cti()};
    client.init();
    const IF_HANDLE interface = client.openInterface(client.openTL());
    EXPECT_EQ(client.accessStatus(interface), DEVICE_ACCESS_STATUS_BUSY);
    client.openDevice(interface, "sim-1", DEVICE_ACCESS_READONLY);
    EXPECT_EQ(client.code, GC_ERR_ACCESS_DENIED);
    EXPECT_EQ(client.lastError(), "camera \"sim-1\" is held by another process");

    holder.kill();
    holder.wait();
    EXPECT_EQ(client.accessStatus(interface), DEVICE_ACCESS_STATUS_READWRITE);
    client.openDevice(interface);
    EXPECT_EQ(client.code, GC_ERR_SUCCESS);
}

TEST(State, ProcessesThatChangeDifferentCamerasAtOnceLoseNothing)
{
    constexpr int processes = 4;
    std::string toml = "[[interface]]\nid = \"sim-eth0\"\n";
    for (int index = 0; index < processes; ++index)
        toml += "[[interface.camera]]\nid = \"" + std::to_string(index) + "\"\nlock = \"unlocked\"\n";
    Simulator simulator(toml);

    std::vector<Process> peers;
    for (int index = 0; index < processes; ++index)
        peers.emplace_back(SIMULATOR_PEER, std::vector<std::string>{"change often", std::to_string(index)});
    for (Process &peer : peers)
        EXPECT_EQ(peer.wait(), 0);

    const std::string state = contentOf(simulator.statePath());
    for (int index = 0; index < processes; ++index)
        EXPECT_TRUE(
            std::regex_search(state, std::regex("\\[" + std::to_string(index) + "\\][^[]*726f756e64313239")))
            << state;
}

TEST(State, ADamagedFileIsToldAndLeftAlone)
{
    const std::pair<const char *, const char *> rows[] = {
        {"[sim-1]\npassword = \"68zz\"\n",
         R"(:2: camera "sim-1": password = "68zz"; pairs of hexadecimal digits )"
         "are expected; delete the state file to start afresh"},
        {"sim-1 = 3\n", ":1: not the state of a camera; delete the state file to start afresh"},
    };
    Simulator simulator;
    Client client{Simulator::cti()};
    OpenCamera camera{client};
    for (const auto &[content, fault] : rows) {
        std::ofstream(simulator.statePath()) << content;
        EXPECT_EQ(client.write(camera.port, commandRegister, lockCommand), GC_ERR_IO);
        EXPECT_EQ(client.lastError(), simulator.statePath().string() + fault);
        EXPECT_EQ(contentOf(simulator.statePath()), content);
    }
}

TEST(State, WithoutAFileItLivesInTheModule)
{
    Simulator simulator;
    const Environment none("TORVANE_SIM_STATE", std::nullopt);
    Client client{Simulator::cti()};
    client.write(OpenCamera(client).port, unlockPassword, "hunter22");
    client.close();
    OpenCamera camera{client};
    EXPECT_EQ(client.read(camera.port, lockState, 4), "00 00 00 00");
    EXPECT_FALSE(fs::exists(simulator.statePath()));
}

} // namespace
