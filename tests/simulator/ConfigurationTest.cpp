// SPDX-License-Identifier: MIT
// Configurations: the cameras without one, and the faults in one, each named by file, line, part, fact and
// way out.
#include "Client.h"
#include "Environment.h"
#include "Simulator.h"

#include <gmock/gmock.h>

#include <chrono>
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
    const struct
    {
        std::string toml;
        const char *text; // behind the path
    } faults[] = {
        {camera + "lock = \"maybe\"\n",
         R"(:5: camera "A1": lock = "maybe"; one of "default", "locked", "unlocked", "none")"},
        {camera + "locked = true\n", R"(:5: camera "A1": unknown key "locked")"},
        {"camera = 1\n", R"(:1: configuration: unknown key "camera")"},
        {"[producer]\nlatency_ms = \"slow\"\n",
         R"(:2: producer: latency_ms = "slow"; a whole number from 0 to 3600000 is expected)"},
        {"[[interface]]\nid = {}\n", R"(:2: interface: id = table; a text in quotes is expected)"},
        {"[[interface]]\nname = \"n\"\n", R"(:1: interface: id is missing)"},
        {camera + "[[interface.camera]]\nid = \"A1\"\n",
         R"(:6: interface "e": id = "A1"; another camera of the interface has it already)"},
        {"[interface]\nid = \"e\"\n",
         R"(:1: configuration: interface is not a list of tables; write [[interface]])"},
        {camera + "ip = \"192.168.0.256\"\n",
         R"(:5: camera "A1": ip = "192.168.0.256"; an address like "192.168.0.10" is expected)"},
        {camera + "password = \"\"\n", R"(:5: camera "A1": password = ""; 1 to 64 bytes are expected)"},
        {camera + "xml = \"no.xml\"\n", R"(:5: camera "A1": xml = "no.xml"; there is no such file)"},
        {"[[failure]]\nfunction = \"GCRead\"\n",
         R"(:2: failure: function = "GCRead"; not the name of a GenTL function)"},
        {"[[failure]]\nfunction = \"TLOpen\"\ncode = 0\n",
         R"(:3: failure: code = 0; a whole number from -2147483648 to -1 is expected)"},
        {"[[interface]]\nid = \"e\"\nproducer = \"second\"\nspeed = 1\n",
         R"(:4: interface "e": unknown key "speed")"},
    };
    Simulator simulator;
    Client client{Simulator::cti()};
    for (const auto &fault : faults) {
        simulator.configure(fault.toml);
        client.init();
        EXPECT_EQ(client.code, GC_ERR_INVALID_VALUE) << fault.toml;
        EXPECT_EQ(client.lastError(), simulator.configPath().string() + fault.text);
    }
    simulator.configure("[[interface\n");
    client.init();
    EXPECT_THAT(client.lastError(), testing::StartsWith(simulator.configPath().string() + ":1: "));

    std::filesystem::remove(simulator.configPath());
    client.init();
    EXPECT_EQ(client.code, GC_ERR_IO) << "the default cameras in place of a missing file";
    EXPECT_EQ(client.lastError(), simulator.configPath().string() + ": No such file or directory");

    simulator.configure("[producer]\nversion = \"2.10\"");
    client.init();
    EXPECT_EQ(client.code, GC_ERR_SUCCESS) << "a failed GCInitLib leaves the library as it was";
    EXPECT_EQ(client.query<PGCGetInfo>("GCGetInfo", TL_INFO_GENTL_VER_MAJOR), "\2\0\0\0"s);
    EXPECT_EQ(client.query<PGCGetInfo>("GCGetInfo", TL_INFO_GENTL_VER_MINOR), "\n\0\0\0"s);
}

TEST(Configuration, AFaultWhileRunningIsToldOnceAndKeepsTheOldCameras)
{
    Simulator simulator;
    Client client{Simulator::cti()};
    OpenCamera camera{client};
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

// The counts of a rule run from the first reading of the file; a rule that stands there unchanged keeps its
// count.
class FailureTest : public testing::Test
{
protected:
    /// The codes of \p count reads of the lock state, 0 shown as "ok".
    std::string reads(int count, std::uint64_t address = lockState)
    {
        std::string codes;
        for (int read = 0; read < count; ++read) {
            client.read(camera->port, address, 4);
            codes += (codes.empty() ? "" : " ") + (client.code == 0 ? "ok" : std::to_string(client.code));
        }
        return codes;
    }

    void open(const std::string &rule)
    {
        simulator.configure(Simulator::oneCamera + rule);
        camera = std::make_unique<OpenCamera>(client);
    }

    Simulator simulator;
    Client client{Simulator::cti()};
    std::unique_ptr<OpenCamera> camera;
};

TEST_F(FailureTest, StrikesFromTheFirstCallOnAsOftenAsItSays)
{
    open(
        "[[failure]]\nfunction = \"GCReadPort\"\ncode = -1011\nfirst = 2\ncount = 2\ntext = \"no answer\"\n");
    EXPECT_EQ(reads(1), "ok");
    EXPECT_EQ(reads(1), "-1011");
    EXPECT_EQ(client.lastError(), "no answer");
    client.devices(camera->interface); // reads the configuration, which has not changed
    EXPECT_EQ(reads(3), "-1011 ok ok");

    client.close();
    open("[[failure]]\nfunction = \"GCReadPort\"\ncount = 0\n");
    EXPECT_EQ(reads(4), "-1001 -1001 -1001 -1001") << "a count of zero: for ever";
    EXPECT_EQ(client.lastError(), "injected failure of GCReadPort");
}

TEST_F(FailureTest, CountsOnlyCallsThatMeetItsConditions)
{
    open("[[failure]]\nfunction = \"GCReadPort\"\naddress = 0x50001004\nfirst = 2\n"
         "[[failure]]\nfunction = \"GCReadPort\"\nid = \"sim-2\"\ncount = 0\n"
         "[[failure]]\nfunction = \"GCReadPort\"\nproducer = \"second\"\ncount = 0\n"
         "[[failure]]\nfunction = \"DevGetInfo\"\ncommand = 3\nid = \"sim-1\"\n");
    EXPECT_EQ(reads(3), "ok ok ok");
    EXPECT_EQ(reads(3, passwordState), "ok -1001 ok");
    client.query<PDevGetInfo>("DevGetInfo", camera->device, DEVICE_INFO_MODEL);
    EXPECT_EQ(client.code, GC_ERR_SUCCESS);
    client.query<PDevGetInfo>("DevGetInfo", camera->device, DEVICE_INFO_TLTYPE);
    EXPECT_EQ(client.code, GC_ERR_ERROR);
}

TEST_F(FailureTest, ReachesTheLibraryItselfAndTheRefreshThatReadsIt)
{
    simulator.failNth("GCInitLib", GC_ERR_RESOURCE_EXHAUSTED, 2);
    client.init();
    EXPECT_EQ(client.code, GC_ERR_SUCCESS);
    client.close();
    client.init();
    EXPECT_EQ(client.code, GC_ERR_RESOURCE_EXHAUSTED);
    EXPECT_EQ(client.lastError(), "injected failure of GCInitLib");
    EXPECT_EQ(client.call<PGCCloseLib>("GCCloseLib")(), GC_ERR_NOT_INITIALIZED);
    camera = std::make_unique<OpenCamera>(client);

    simulator.failNth("IFUpdateDeviceList", GC_ERR_TIMEOUT, 1, 1, "id = \"sim-eth0\"\n");
    EXPECT_THAT(client.devices(camera->interface), ElementsAre("sim-1"));
    EXPECT_EQ(client.code, GC_ERR_TIMEOUT);

    simulator.failNth("GCGetLastError", GC_ERR_ERROR, 1);
    client.devices(camera->interface);
    EXPECT_EQ(client.lastError(), "");
}

TEST_F(FailureTest, LatencyDelaysEachPortAccess)
{
    open("[producer]\nlatency_ms = 60\n");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(reads(2), "ok ok");
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(120));
}

} // namespace
