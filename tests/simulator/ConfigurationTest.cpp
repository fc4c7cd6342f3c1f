// SPDX-License-Identifier: MIT
// Configurations: the cameras without one, and the faults in one, each named by file, line, part, fact and
// way out.
#include "Client.h"
#include "Environment.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

using testing::ElementsAre;

namespace {

TEST(Configuration, TheDefaultCamerasCoverTheStatesOfAList)
{
    Simulator simulator;
    const Environment none("TORVANE_SIM_CONFIG", std::nullopt);
    Client client{Simulator::cti()};
    client.init();
    const TL_HANDLE tl = client.openTL();
    std::vector<std::string> states;
    for (const char *id : {"sim-eth0", "sim-usb0"}) {
        const IF_HANDLE interface = client.openInterface(tl, id);
        for (const std::string &camera : client.devices(interface)) {
            const std::int32_t access = client.accessStatus(interface, camera.c_str());
            const PORT_HANDLE port =
                client.port(client.openDevice(interface, camera.c_str(), DEVICE_ACCESS_READONLY));
            states.push_back(camera + ' ' + std::to_string(access) + " [" + client.read(port, lockState, 8) +
                             ']');
        }
    }
    EXPECT_THAT(states, ElementsAre("sim-gev-locked 1 [01 00 00 00 01 00 00 00]",
                                    "sim-gev-unlocked 1 [00 00 00 00 01 00 00 00]",
                                    "sim-gev-default 1 [01 00 00 00 00 00 00 00]", "sim-gev-nolock 1 []",
                                    "sim-gev-busy 4 []", "sim-gev-readonly 2 [01 00 00 00 01 00 00 00]",
                                    "sim-u3v-locked 1 [01 00 00 00 01 00 00 00]"));
}

TEST(Configuration, TheExampleOfItsPageIsRight)
{
    std::stringstream page;
    page << std::ifstream(TORVANE_SIM_PAGE).rdbuf();
    const std::string text = page.str();
    const std::size_t begin = text.find("```toml\n") + 8;
    Simulator simulator(text.substr(begin, text.find("```", begin) - begin));
    Client client{Simulator::cti()};
    OpenCamera camera{client, "A1"};
    client.read(camera.port, lockState, 4);
    EXPECT_EQ(client.code, GC_ERR_TIMEOUT);
    EXPECT_EQ(client.lastError(), "the cable is loose");
    EXPECT_EQ(client.read(camera.port, lockState, 8), "01 00 00 00 01 00 00 00");
}

TEST(Configuration, FaultsAreNamed)
{
    const std::string camera = "[[interface]]\nid = \"e\"\n[[interface.camera]]\nid = \"A1\"\n";
    const std::pair<std::string, const char *> faults[] = {
        {camera + "lock = \"maybe\"\n",
         R"(:5: camera "A1": lock = "maybe"; one of "default", "locked", "unlocked", "none")"},
        {camera + "locked = true\n", R"(:5: camera "A1": unknown key "locked")"},
        {"[producer]\nlatency_ms = \"slow\"\n",
         R"(:2: producer: latency_ms = "slow"; a whole number from 0 to 3600000 is expected)"},
        {"[[interface]]\nid = {}\n", R"(:2: interface: id = table; a text in quotes is expected)"},
        {camera + "[[interface.camera]]\nid = \"A1\"\n",
         R"(:6: interface "e": id = "A1"; another camera of the interface has it already)"},
        {"[interface]\nid = \"e\"\n",
         R"(:1: configuration: interface is not a list of tables; write [[interface]])"},
        {camera + "ip = \"192.168.0.256\"\n",
         R"(:5: camera "A1": ip = "192.168.0.256"; an address like "192.168.0.10" is expected)"},
        {camera + "password = \"\"\n", R"(:5: camera "A1": password = ""; 1 to 64 bytes are expected)"},
        {"[[interface\n", ":1: Error while parsing"},
        {camera + "xml = \"no.xml\"\n", R"(:5: camera "A1": xml = "no.xml"; there is no such file)"},
        {"[[failure]]\nfunction = \"GCRead\"\n",
         R"(:2: failure: function = "GCRead"; not the name of a GenTL function)"},
    };
    Simulator simulator;
    Client client{Simulator::cti()};
    for (const auto &[toml, fault] : faults) {
        simulator.configure(toml);
        client.init();
        EXPECT_EQ(client.code, GC_ERR_INVALID_VALUE) << toml;
        EXPECT_THAT(client.lastError(), testing::StartsWith(simulator.configPath().string() + fault));
    }
    std::filesystem::remove(simulator.configPath());
    client.init();
    EXPECT_EQ(client.code, GC_ERR_IO) << "the default cameras in place of a missing file";
    EXPECT_EQ(client.lastError(), simulator.configPath().string() + ": " + testsystem::missingFileWords());

    simulator.configure("[producer]\nversion = \"2.10\"");
    client.init();
    EXPECT_EQ(client.code, GC_ERR_SUCCESS) << "a failed GCInitLib leaves the library as it was";
    EXPECT_EQ(client.query(client.GCGetInfo, TL_INFO_GENTL_VER_MAJOR), "\2\0\0\0"s);
    EXPECT_EQ(client.query(client.GCGetInfo, TL_INFO_GENTL_VER_MINOR), "\n\0\0\0"s);
}

TEST_F(OpenCameraTest, AFaultWhileRunningIsToldOnceAndKeepsTheOldCameras)
{
    const std::string fault = simulator.configPath().string() + ":1: interface: id is missing";
    testing::internal::CaptureStderr();
    for (int time = 1; time <= 2; ++time) {
        simulator.configure("[[interface]]\n");
        for (int refresh = 1; refresh <= 2; ++refresh) {
            EXPECT_THAT(client.devices(camera.interface), ElementsAre("sim-1"));
            EXPECT_EQ(client.code, GC_ERR_INVALID_VALUE) << "refresh " << refresh;
            EXPECT_EQ(client.lastError(), fault);
        }
        simulator.configure(Simulator::oneCamera);
        client.devices(camera.interface);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), fault + '\n' + fault + '\n') << "once each time";
    EXPECT_EQ(client.read(camera.port, lockState, 4), "01 00 00 00");
}

TEST_F(OpenCameraTest, AFailureOfACameraMeetsCallsWithItsHandles)
{
    reopen(Simulator::oneCamera + "[[failure]]\nfunction = \"DevGetInfo\"\nid = \"sim-1\"\n"s);
    client.query(client.DevGetInfo, camera.device, DEVICE_INFO_MODEL);
    EXPECT_EQ(client.code, GC_ERR_ERROR);
}

} // namespace
