// SPDX-License-Identifier: MIT
// The state file: what it keeps, and that processes and modules which share it don't get in each other's way.
#include "Client.h"
#include "Environment.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path &path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Runs \p work in a process of its own.
/// \returns its id
template <class Work>
pid_t startProcess(Work work)
{
    const pid_t child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    return child;
}

bool endedWell(pid_t child)
{
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(State, APasswordAndALockStateOutliveTheProcess)
{
    Simulator simulator;
    EXPECT_TRUE(endedWell(startProcess([] {
        Client client{Simulator::cti()};
        OpenCamera camera{client};
        client.write(camera.port, unlockPassword, "hunter22");
        client.write(camera.port, newPassword, "caf\xe9\0\0\0\0"sv); // bytes that are no text
    })));
    for (const fs::path &file : {simulator.statePath(), simulator.logPath()})
        EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write) << file;

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
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t holder = startProcess([&] {
        Client client{Simulator::cti()};
        OpenCamera camera{client};
        if (write(ready[1], "!", 1) == 1)
            pause();
    });
    char signal = 0;
    ASSERT_EQ(read(ready[0], &signal, 1), 1);

    Client client{Simulator::cti()};
    client.init();
    const IF_HANDLE interface = client.openInterface(client.openTL());
    EXPECT_EQ(client.accessStatus(interface), DEVICE_ACCESS_STATUS_BUSY);
    client.openDevice(interface, "sim-1", DEVICE_ACCESS_READONLY);
    EXPECT_EQ(client.code, GC_ERR_ACCESS_DENIED);
    EXPECT_EQ(client.lastError(), "camera \"sim-1\" is held by another process");

    kill(holder, SIGKILL);
    waitpid(holder, nullptr, 0);
    EXPECT_EQ(client.accessStatus(interface), DEVICE_ACCESS_STATUS_READWRITE);
    client.openDevice(interface);
    EXPECT_EQ(client.code, GC_ERR_SUCCESS);
}

TEST(State, ProcessesThatChangeDifferentCamerasAtOnceLoseNothing)
{
    constexpr int processes = 4;
    constexpr int rounds = 30;
    std::string toml = "[[interface]]\nid = \"sim-eth0\"\n";
    for (int index = 0; index < processes; ++index)
        toml += "[[interface.camera]]\nid = \"" + std::to_string(index) + "\"\nlock = \"unlocked\"\n";
    Simulator simulator(toml);

    std::vector<pid_t> children;
    for (int index = 0; index < processes; ++index)
        children.push_back(startProcess([&] {
            Client client{Simulator::cti()};
            OpenCamera camera{client, std::to_string(index).c_str()};
            for (int round = 0; round < rounds; ++round) {
                const std::string password = "round" + std::to_string(100 + round);
                if (client.write(camera.port, newPassword, password) != GC_ERR_SUCCESS)
                    _exit(1);
            }
        }));
    for (const pid_t child : children)
        EXPECT_TRUE(endedWell(child));

    const std::string state = contentOf(simulator.statePath());
    for (int index = 0; index < processes; ++index)
        EXPECT_THAT(state,
                    testing::ContainsRegex("\\[" + std::to_string(index) + "\\][^[]*726f756e64313239"));
}

TEST(State, ADamagedFileIsToldAndLeftAlone)
{
    const struct
    {
        const char *content;
        const char *text; // behind the path
    } rows[] = {
        {"[sim-1]\npassword = \"68zz\"\n",
         R"(:2: camera "sim-1": password = "68zz"; pairs of hexadecimal digits )"
         "are expected; delete the state file to start afresh"},
        {"sim-1 = 3\n", ":1: not the state of a camera; delete the state file to start afresh"},
    };
    Simulator simulator;
    Client client{Simulator::cti()};
    OpenCamera camera{client};
    for (const auto &row : rows) {
        std::ofstream(simulator.statePath()) << row.content;
        EXPECT_EQ(client.write(camera.port, commandRegister, lockCommand), GC_ERR_IO);
        EXPECT_EQ(client.lastError(), simulator.statePath().string() + row.text);
        EXPECT_EQ(contentOf(simulator.statePath()), row.content);
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
