// SPDX-License-Identifier: MIT
// Producers, interfaces and devices that come and go: the tree follows, in the stated order of calls, and
// nothing that a caller can still hold is freed too early.
#include "BackEndFixture.h"
#include "GenTLLibrary.h"
#include "TLInterface.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <mutex>
#include <thread>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

constexpr const char *said = "text = \"no\"\n";

std::string interface(const std::string &id, const std::vector<std::string> &cameras,
                      const std::string &keys = "")
{
    std::string toml = "[[interface]]\nid = \"" + id + "\"\ntype = \"GEV\"\n" + keys;
    for (const std::string &camera : cameras)
        toml += "[[interface.camera]]\nid = \"" + camera + "\"\nlock = \"locked\"\npassword = \"hunter22\"\n";
    return toml;
}

class TreeTest : public BackEndTest
{
protected:
    // A folder with a copy of the producer, to be taken away again.
    std::string installProducer(const std::string &folder, const std::string &variant = "")
    {
        const fs::path target = simulator.folder() / folder / "producer.cti";
        fs::create_directories(target.parent_path());
        fs::copy_file(variant.empty() ? Simulator::cti() : Simulator::cti(variant), target);
        return target.parent_path().string();
    }

    static std::vector<std::string> closeCalls(const std::vector<std::string> &calls)
    {
        std::vector<std::string> closes;
        for (const std::string &name : functionsOf(calls)) {
            if (name.find("Close") != std::string::npos)
                closes.push_back(name);
        }
        return closes;
    }
};

TEST_F(TreeTest, ProducersAreFoundOnce)
{
    start();
    const std::size_t before = simulator.calls("GCInitLib").size();
    EXPECT_EQ(printedBy([this] { EXPECT_TRUE(backEnd->discoverLibraries(true)); }), "");
    EXPECT_EQ(simulator.calls("GCInitLib").size(), before) << "the same files create nothing";
    EXPECT_EQ(before, 2u) << "one for the version query, one for the session";
}

TEST_F(TreeTest, NoProducerChangesNothing)
{
    const std::string folder = installProducer("only");
    search(folder);
    start();
    fs::remove_all(folder);
    EXPECT_EQ(printedBy([this] { EXPECT_FALSE(backEnd->discoverLibraries(true)); }),
              "No GenTL libraries detected!\n");
    EXPECT_EQ(pass(), "");
    EXPECT_THAT(ids(), ElementsAre("sim-1"));
}

TEST_F(TreeTest, AFileThatIsNamedTwiceIsTwoLibraries)
{
    fs::copy_file(Simulator::cti(), "producer.cti");
    search(".");
    EXPECT_EQ(start(), "ERROR: Creating the GenTL_Interface instance failed.\n"
                       "       Msg: Initializing ./producer.cti failed! Code: -1004.\n");
    EXPECT_THAT(ids(), ElementsAre("sim-1")) << "the one without a producer is skipped";
    EXPECT_EQ(printedBy([this] { backEnd->printLibraries(); }),
              "\nAvailable GenTL libraries:\n1) ./producer.cti\n2) ./producer.cti\n");
    EXPECT_EQ(end(), "");
}

TEST_F(TreeTest, AProducerThatIsGoneIsClosed)
{
    const std::string first = installProducer("first");
    const std::string second = installProducer("second", "backend_second");
    search(first + ";" + second);
    simulator.configure(interface("eth0", {"A"}, "producer = \"torvane_sim\"\n") +
                        interface("eth1", {"B"}, "producer = \"second\"\n"));
    start();
    ASSERT_THAT(ids(), ElementsAre("A", "B"));
    Device *lost = device(0);
    backEnd->selectDevice(lost);
    fs::remove_all(first);
    simulator.clearLog();
    EXPECT_EQ(printedBy([this] { backEnd->discoverLibraries(true); }), "");
    EXPECT_THAT(functionsOf(simulator.calls()), ElementsAre("DevClose", "IFClose", "TLClose", "GCCloseLib"));
    EXPECT_EQ(backEnd->devices().size(), 2u) << "the flat list learns of it in the next pass";
    EXPECT_EQ(lost->id(), "") << "switched off";
    pass();
    EXPECT_THAT(ids(), ElementsAre("B"));
    EXPECT_TRUE(backEnd->selectedIsLocked()) << "nothing is selected any more";
    EXPECT_THAT(backEnd->selectedPasswordHistory(), IsEmpty());
}

TEST_F(TreeTest, AProducerThatCannotStart)
{
    useProducers({"backend_no_start", ""});
    EXPECT_THAT(start(), StartsWith("ERROR: Creating the GenTL_Interface instance failed.\n"
                                    "       Msg: Computing address for function GCCloseLib of cti "));
    EXPECT_THAT(ids(), ElementsAre("sim-1")) << "it hides nobody";
    const GenTLLibrary broken(Simulator::cti("backend_no_start"));
    EXPECT_EQ(broken.vendor() + broken.version() + broken.getGenTLVersionString(), "");
}

TEST_F(TreeTest, AFailedSession)
{
    simulator.failNth("GCInitLib", -1010, 2); // the first is the version query's
    EXPECT_EQ(start(), "ERROR: GCInitLib() failed with code -1010!\n");
    EXPECT_THAT(ids(), IsEmpty());
    simulator.clearLog();
    EXPECT_EQ(pass(), "") << "never retried";
    EXPECT_EQ(end(), "") << "and not closed";
    EXPECT_THAT(simulator.calls(), IsEmpty());
}

TEST_F(TreeTest, ALibraryThatDoesNotOpenHidesThoseBehindIt)
{
    useProducers({"", "backend_second"});
    simulator.configure(interface("eth0", {"A"}, "producer = \"torvane_sim\"\n") +
                        interface("eth1", {"B"}, "producer = \"second\"\n"));
    simulator.failNth("TLOpen", -1010, 1, 2, std::string("producer = \"torvane_sim\"\n") + said);
    const std::string failure = "ERROR: TLOpen() failed with code -1010!\n         Msg: no\n";
    EXPECT_EQ(start(), failure);
    EXPECT_THAT(ids(), IsEmpty());
    EXPECT_EQ(simulator.calls("TLOpen").size(), 1u) << "the second is not visited";
    EXPECT_EQ(pass(), failure);
    EXPECT_EQ(pass(), "") << "a failed level is retried";
    EXPECT_THAT(ids(), ElementsAre("A", "B"));
}

TEST_F(TreeTest, AnInterfaceThatDoesNotOpenHidesThoseBehindItInItsLibrary)
{
    useProducers({"", "backend_second"});
    const std::string first = "producer = \"torvane_sim\"\n";
    simulator.configure(interface("eth0", {"A"}, first) + interface("eth1", {"B"}, first) +
                        interface("eth2", {"C"}, "producer = \"second\"\n"));
    simulator.failNth("TLOpenInterface", -1010, 1, 1, first + said);
    EXPECT_EQ(start(), "ERROR: TLOpenInterface() failed with code -1010!\n         Msg: no\n");
    EXPECT_THAT(ids(), ElementsAre("C")) << "the next library is visited";
    EXPECT_EQ(pass(), "");
    EXPECT_THAT(ids(), ElementsAre("C", "A", "B"));
}

TEST_F(TreeTest, NoInterface)
{
    start();
    simulator.configure("");
    EXPECT_EQ(pass(), "No interfaces detected!\n");
    EXPECT_THAT(ids(), IsEmpty());
    EXPECT_EQ(pass(), "No interfaces detected!\n") << "on every pass";
}

TEST_F(TreeTest, AFailedListKeepsWhatIsThere)
{
    // The configuration that is read in the failing pass has lost A. A failure of the interface list leaves the known
    // interfaces to be walked, which then learn of it.
    const struct
    {
        const char *function;
        const char *line;
        std::vector<std::string> ids;
    } rows[] = {
        {"TLUpdateInterfaceList", "ERROR: TLUpdateInterfaceList() failed with code -1011!\n", {"B"}},
        {"TLGetNumInterfaces", "ERROR: TLGetNumInterfaces() failed with code -1011!\n", {"B"}},
        {"TLGetInterfaceID", "ERROR: TLGetInterfaceID(0) failed with code -1011!\n", {"B"}},
        {"IFUpdateDeviceList", "ERROR: IFUpdateDeviceList() failed with code -1011!\n", {"A", "B"}},
        {"IFGetNumDevices", "ERROR: IFGetNumDevices() failed with code -1011!\n", {"A", "B"}},
        {"IFGetDeviceID", "ERROR: IFGetDeviceID(0) failed with code -1011!\n", {"A", "B"}},
    };
    for (const auto &row : rows) {
        simulator.configure(interface("eth0", {"A", "B"}));
        backEnd = std::make_unique<BackEnd>();
        start();
        simulator.configure(interface("eth0", {"B"}));
        simulator.failNth(row.function, -1011, 1, 1, said);
        EXPECT_EQ(pass(), row.line + std::string("         Msg: no\n"));
        EXPECT_EQ(ids(), row.ids) << row.function;
        EXPECT_EQ(pass(), "");
        EXPECT_THAT(ids(), ElementsAre("B"));
    }
}

TEST_F(TreeTest, AFailedIdentifierGainsWhatCameBeforeAndRemovesNothing)
{
    simulator.configure(interface("eth0", {"A", "B"}));
    start();
    simulator.configure(interface("eth0", {"B", "C", "D", "E", "F"}));
    simulator.failNth("IFGetDeviceID", -1011, 4, 1, said);
    EXPECT_EQ(pass(), "ERROR: IFGetDeviceID(3) failed with code -1011!\n         Msg: no\n");
    EXPECT_THAT(ids(), ElementsAre("A", "B", "C", "D"));
    EXPECT_EQ(pass(), "");
    EXPECT_THAT(ids(), ElementsAre("B", "C", "D", "E", "F"));
}

TEST_F(TreeTest, KnownDevicesStayAndNewOnesAreProbedOnce)
{
    simulator.configure(interface("eth0", {"A", "B", "C"}));
    start();
    const std::vector<Device *> before = backEnd->devices();
    backEnd->selectDevice(before[2]);
    simulator.configure(interface("eth0", {"D", "C", "A"}));
    simulator.clearLog();
    EXPECT_EQ(pass(), "");
    EXPECT_THAT(ids(), ElementsAre("A", "C", "D")) << "in order of first sight";
    EXPECT_EQ(device(0), before[0]);
    EXPECT_EQ(device(1), before[2]);
    EXPECT_TRUE(device(1)->isOpen());
    EXPECT_EQ(simulator.calls("IFOpenDevice").size(), 1u);
    simulator.clearLog();
    pass();
    EXPECT_THAT(functionsOf(simulator.calls()),
                ElementsAre("TLUpdateInterfaceList", "TLGetNumInterfaces", "TLGetInterfaceID",
                            "IFUpdateDeviceList", "IFGetNumDevices", "IFGetDeviceID", "IFGetDeviceID",
                            "IFGetDeviceID"))
        << "a quiet pass only enumerates";
}

TEST_F(TreeTest, TheSelectedDeviceVanishes)
{
    simulator.configure(interface("eth0", {"A", "B"}));
    start();
    Device *lost = device(1);
    backEnd->selectDevice(lost);
    backEnd->unlock("hunter22", false);
    simulator.configure(interface("eth0", {"A"}));
    simulator.clearLog();
    EXPECT_EQ(pass(), "");
    EXPECT_EQ(simulator.calls("DevClose").size(), 1u);
    EXPECT_THAT(simulator.portTraffic(), IsEmpty()) << "closed without a read";
    EXPECT_TRUE(backEnd->selectedIsLocked());
    EXPECT_THAT(backEnd->selectedPasswordHistory(), IsEmpty());

    EXPECT_EQ(lost->id(), "");
    EXPECT_EQ(lost->accessStatus(), 0);
    EXPECT_EQ(lost->model(), "");
    EXPECT_FALSE(lost->isLocked());
    simulator.clearLog();
    EXPECT_EQ(printedBy([&] {
                  lost->open();
                  lost->unlock("hunter22");
                  lost->close(false);
              }),
              "");
    EXPECT_THAT(simulator.calls(), IsEmpty());
}

// The address of a vanished device is not used again, and the object can be asked, until its holder has
// learned of the pass after that; what nobody takes the back end frees itself.
TEST_F(TreeTest, VanishedDevicesAreFreedAPassLater)
{
    simulator.configure(interface("eth0", {"A"}));
    start();
    Device *lost = device(0);
    simulator.configure(interface("eth0", {"B"}));
    pass();
    RetiredObjects taken = backEnd->takeRetired();
    ASSERT_EQ(taken.size(), 1u);
    EXPECT_EQ(taken[0].get(), lost);
    EXPECT_NE(device(0), lost);

    backEnd->selectDevice(lost); // a row that was still shown
    const std::weak_ptr<const void> watch = taken[0];
    pass();
    EXPECT_FALSE(watch.expired());
    backEnd->freeRetired(std::move(taken));
    EXPECT_TRUE(watch.expired());
    EXPECT_TRUE(backEnd->selectedIsLocked()) << "and deselected";

    simulator.configure(interface("eth1", {"C"})); // takes an interface away, with its device
    pass();
    taken = backEnd->takeRetired();
    EXPECT_EQ(taken.size(), 2u);
    simulator.configure(interface("eth1", {}));
    pass();
    pass();
    EXPECT_THAT(backEnd->takeRetired(), IsEmpty()) << "freed by the back end";
}

TEST_F(TreeTest, AnInterfaceVanishes)
{
    simulator.configure(interface("eth0", {"A", "B"}) + interface("eth1", {"C"}));
    start();
    backEnd->selectDevice(device(1));
    simulator.configure(interface("eth1", {"C"}));
    simulator.clearLog();
    EXPECT_EQ(pass(), "");
    EXPECT_THAT(closeCalls(simulator.calls()), ElementsAre("DevClose", "IFClose"));
    EXPECT_THAT(ids(), ElementsAre("C"));
}

TEST_F(TreeTest, OneIdentifierOnTwoInterfaces)
{
    const auto two = interface("eth0", {"X"}) + interface("eth1", {"X"});
    for (const char *remaining : {"eth0", "eth1"}) {
        backEnd = std::make_unique<BackEnd>();
        simulator.configure(two);
        start();
        ASSERT_THAT(ids(), ElementsAre("X", "X"));
        Device *survivor = device(std::string(remaining) == "eth0" ? 0 : 1);
        simulator.configure(interface("eth0", std::string(remaining) == "eth0" ? std::vector<std::string>{"X"}
                                                                               : std::vector<std::string>{}) +
                            interface("eth1", std::string(remaining) == "eth1" ? std::vector<std::string>{"X"}
                                                                               : std::vector<std::string>{}));
        pass();
        ASSERT_THAT(ids(), ElementsAre("X")) << remaining;
        EXPECT_EQ(device(), survivor);
        simulator.configure(interface("eth0", {}) + interface("eth1", {}));
        pass();
        EXPECT_THAT(ids(), IsEmpty());
    }
}

TEST_F(TreeTest, ACableThatMovesWithinOnePassGivesANewDevice)
{
    simulator.configure(interface("eth0", {"X"}) + interface("eth1", {}));
    start();
    Device *before = device();
    before->rememberPassword("hunter22");
    simulator.configure(interface("eth0", {}) + interface("eth1", {"X"}));
    pass();
    ASSERT_THAT(ids(), ElementsAre("X"));
    EXPECT_NE(device(), before);
    EXPECT_THAT(device()->passwordHistory(), IsEmpty());
    EXPECT_EQ(device()->transportType(), TransportType::GEV) << "probed";
}

TEST_F(TreeTest, AResetDeviceComesBackAsANewOne)
{
    const auto camera = [](const std::string &rebootMs) {
        return interface("eth0", {"A"}) + "reboot_ms = " + rebootMs + "\n";
    };
    simulator.configure(camera("200"));
    Device *before = select();
    before->rememberPassword("hunter22");
    backEnd->factoryResetSelected();
    pass();
    EXPECT_THAT(ids(), IsEmpty()) << "rebooting";
    for (int tries = 0; backEnd->devices().empty() && tries < 100; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        pass();
    }
    ASSERT_THAT(ids(), ElementsAre("A"));
    EXPECT_THAT(device()->passwordHistory(), IsEmpty()) << "a fresh object";
    EXPECT_TRUE(device()->isDefaultPassword());

    end();
    backEnd = std::make_unique<BackEnd>();
    simulator.configure(camera("0"));
    Device *same = select();
    backEnd->factoryResetSelected();
    simulator.clearLog();
    pass();
    ASSERT_THAT(ids(), ElementsAre("A"));
    EXPECT_EQ(device(), same) << "it still answers: probed again and appended";
    EXPECT_EQ(simulator.calls("IFOpenDevice").size(), 1u);
}

TEST_F(TreeTest, TheEndClosesChildrenFirst)
{
    simulator.configure(interface("eth0", {"A"}));
    select();
    EXPECT_EQ(end(), "");
    EXPECT_THAT(functionsOf(simulator.calls()), ElementsAre("DevClose", "IFClose", "TLClose", "GCCloseLib"));
}

TEST_F(TreeTest, FailedClosesAreWarnings)
{
    for (const char *function : {"DevClose", "IFClose", "TLClose", "GCCloseLib"}) {
        // The probe and the version query come before.
        const bool second = std::string(function) == "DevClose" || std::string(function) == "GCCloseLib";
        simulator.failNth(function, -1010, second ? 2 : 1, 1, said);
    }
    select();
    EXPECT_EQ(end(), "WARNING: DevClose() failed with code -1010!\n         Msg: no\n"
                     "WARNING: IFClose() failed with code -1010!\n         Msg: no\n"
                     "WARNING: TLClose() failed with code -1010!\n         Msg: no\n"
                     "WARNING: GCCloseLib() failed with code -1010!\n");
}

TEST_F(TreeTest, WhatLibrariesAndInterfacesSayOfThemselves)
{
    simulator.configure("[producer]\nversion = \"1.4\"\n" + interface("eth0", {}, "name = \"Port one\"\n"));
    GenTLLibrary library(Simulator::cti());
    EXPECT_EQ(library.vendor(), "Torvane");
    EXPECT_NE(library.version(), library.vendor());
    EXPECT_THAT(library.version(), HasSubstr("."));
    EXPECT_EQ(library.getGenTLVersionString(), "V1.4");
    library.openTL();
    RetiredObjects retired;
    library.updateInterfaces(true, retired);
    ASSERT_EQ(library.interfaces().size(), 1u);
    EXPECT_TRUE(library.interfaces()[0]->isOpen()) << "opened at once";
    EXPECT_EQ(library.interfaces()[0]->displayName(), "Port one");
}

TEST_F(TreeTest, WhatLibrariesAndInterfacesFailToSay)
{
    const auto failing = [&](const std::string &function, const std::string &condition, std::uint64_t n) {
        simulator.configure(interface("eth0", {}));
        simulator.failNth(function, -1010, n, 1, condition + said);
    };
    const std::string msg = "         Msg: no\n";
    const auto answer = [&](std::string (GenTLLibrary::*query)() const) {
        return printedBy([&] { EXPECT_EQ((GenTLLibrary(Simulator::cti()).*query)(), ""); });
    };
    failing("GCGetInfo", "command = 1\n", 1);
    EXPECT_EQ(answer(&GenTLLibrary::vendor),
              "WARNING: GCGetInfo(TL_INFO_VENDOR) (size inquiry) failed with code -1010!\n" + msg);
    failing("GCGetInfo", "command = 1\n", 2);
    EXPECT_EQ(answer(&GenTLLibrary::vendor),
              "WARNING: GCGetInfo(TL_INFO_VENDOR) failed with code -1010!\n" + msg);
    failing("GCGetInfo", "command = 3\n", 1);
    EXPECT_EQ(answer(&GenTLLibrary::version),
              "WARNING: GCGetInfo(TL_INFO_VERSION) failed with code -1010!\n" + msg);
    EXPECT_EQ(printedBy([] { EXPECT_EQ(GenTLLibrary(Simulator::cti("backend_odd_vendor")).vendor(), ""); }),
              "WARNING: GCGetInfo(TL_INFO_VENDOR) delivered an unexpected data type 5!\n");
    failing("IFGetInfo", "", 1);
    EXPECT_EQ(printedBy([&] {
                  GenTLLibrary library(Simulator::cti());
                  library.openTL();
                  RetiredObjects retired;
                  library.updateInterfaces(true, retired);
                  EXPECT_EQ(library.interfaces().at(0)->displayName(), "");
              }),
              "ERROR: IFGetInfo(INTERFACE_INFO_DISPLAYNAME) failed with code -1010!\n" + msg);
}

// A pass beside the window's operations, with cameras that come and go: whatever meets whatever, each handle is closed
// by the one DevClose, and nothing is touched that has been freed.
TEST_F(TreeTest, APassBesideOperations)
{
    const std::string both = interface("eth0", {"A", "B"}) + interface("eth1", {"C"});
    const std::string few = interface("eth0", {"B"}) + interface("eth1", {});
    simulator.configure(both);
    start();
    std::atomic<bool> finished = false;
    std::mutex handover; // as the window's, for what has been retired
    std::vector<RetiredObjects> announced;

    const std::string printed = printedBy([&] {
        std::thread passes([&] {
            for (int i = 0; i < 150; ++i) {
                simulator.configure(i % 2 == 0 ? few : both);
                backEnd->updateDevices();
                const std::lock_guard guard(handover);
                announced.push_back(backEnd->takeRetired());
            }
            finished = true;
        });
        while (!finished) {
            std::vector<RetiredObjects> due;
            {
                const std::lock_guard guard(handover);
                while (announced.size() > 1) { // what went in a pass is freed behind the pass after that
                    due.push_back(std::move(announced.front()));
                    announced.erase(announced.begin());
                }
            }
            for (RetiredObjects &objects : due)
                backEnd->freeRetired(std::move(objects));
            for (Device *known : backEnd->devices()) {
                backEnd->selectDevice(known);
                backEnd->unlock("hunter22", false);
                known->close(false);
            }
        }
        passes.join();
        backEnd.reset();
    });
    EXPECT_THAT(printed, testing::Not(HasSubstr("DevClose() failed")));
    EXPECT_EQ(simulator.openHandles(), 0);
}

} // namespace
