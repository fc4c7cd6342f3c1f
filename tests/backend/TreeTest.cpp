// SPDX-License-Identifier: MIT
// Producers, interfaces and devices that come and go: the tree follows, in the stated order of calls, and
// nothing that a caller can still hold is freed too early.
#include "BackEndFixture.h"
#include "GenTLLibrary.h"
#include "TLInterface.h"

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <atomic>
#include <deque>
#include <filesystem>
#include <mutex>
#include <thread>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

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

    // Two producers, each in a folder of its own, and configurations that count in one of them.
    void searchBoth()
    {
        search(folderOf(Simulator::cti()) + ";" + folderOf(Simulator::cti("backend_second")));
    }
    const std::string first = "producer = \"torvane_sim\"\n";
    const std::string second = "producer = \"second\"\n";
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
    const std::string gone = installProducer("first");
    search(gone + ";" + installProducer("second", "backend_second"));
    simulator.configure(interface("eth0", {"A"}, first) + interface("eth1", {"B"}, second));
    start();
    ASSERT_THAT(ids(), ElementsAre("A", "B"));
    Device *lost = device(0);
    backEnd->selectDevice(lost);
    fs::remove_all(gone);
    simulator.clearLog();
    EXPECT_EQ(printedBy([this] { backEnd->discoverLibraries(true); }), "");
    EXPECT_THAT(functionsOf(simulator.calls()), ElementsAre("DevClose", "IFClose", "TLClose", "GCCloseLib"));
    EXPECT_EQ(backEnd->devices().size(), 2u) << "the flat list learns of it in the next pass";
    EXPECT_EQ(lost->id(), "") << "switched off";
    pass();
    EXPECT_THAT(ids(), ElementsAre("B"));
    EXPECT_THAT(backEnd->selectedPasswordHistory(), IsEmpty()) << "nothing is selected any more";
}

TEST_F(TreeTest, AProducerThatCannotStart)
{
    search(folderOf(Simulator::cti("backend_no_start")) + ";" + folderOf(Simulator::cti()));
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
    searchBoth();
    simulator.configure(interface("eth0", {"A"}, first) + interface("eth1", {"B"}, second));
    fail("TLOpen", 1, 2, first);
    EXPECT_EQ(start(), failed("TLOpen()"));
    EXPECT_THAT(ids(), IsEmpty());
    EXPECT_EQ(simulator.calls("TLOpen").size(), 1u) << "the second is not visited";
    EXPECT_EQ(pass(), failed("TLOpen()"));
    EXPECT_EQ(pass(), "") << "a failed level is retried";
    EXPECT_THAT(ids(), ElementsAre("A", "B"));
}

TEST_F(TreeTest, AnInterfaceThatDoesNotOpenHidesThoseBehindItInItsLibrary)
{
    searchBoth();
    simulator.configure(interface("eth0", {"A"}, first) + interface("eth1", {"B"}, first) +
                        interface("eth2", {"C"}, second));
    fail("TLOpenInterface", 1, 1, first);
    EXPECT_EQ(start(), failed("TLOpenInterface()"));
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
    const std::vector<std::string> learned{"B"};
    const std::vector<std::string> kept{"A", "B"};
    const std::pair<std::string, std::vector<std::string>> rows[] = {
        {"TLUpdateInterfaceList()", learned}, {"TLGetNumInterfaces()", learned},
        {"TLGetInterfaceID(0)", learned},     {"IFUpdateDeviceList()", kept},
        {"IFGetNumDevices()", kept},          {"IFGetDeviceID(0)", kept},
    };
    for (const auto &[call, expected] : rows) {
        startWith(interface("eth0", {"A", "B"}));
        simulator.configure(interface("eth0", {"B"}));
        fail(call.substr(0, call.find('(')));
        EXPECT_EQ(pass(), failed(call));
        EXPECT_EQ(ids(), expected) << call;
        EXPECT_EQ(pass(), "");
        EXPECT_EQ(ids(), learned) << call;
    }
}

TEST_F(TreeTest, AFailedIdentifierGainsWhatCameBeforeAndRemovesNothing)
{
    simulator.configure(interface("eth0", {"A", "B"}));
    start();
    simulator.configure(interface("eth0", {"B", "C", "D", "E", "F"}));
    fail("IFGetDeviceID", 4);
    EXPECT_EQ(pass(), failed("IFGetDeviceID(3)"));
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
    EXPECT_THAT(backEnd->selectedPasswordHistory(), IsEmpty()) << "nothing is selected";

    simulator.clearLog();
    EXPECT_EQ(lost->id() + lost->model(), "") << "switched off";
    EXPECT_FALSE(lost->isLocked());
    lost->open();
    lost->unlock("hunter22");
    lost->close(false);
    EXPECT_THAT(simulator.calls(), IsEmpty());

    simulator.configure(interface("eth0", {"A", "B"}));
    pass();
    ASSERT_THAT(ids(), ElementsAre("A", "B"));
    EXPECT_THAT(device(1)->passwordHistory(), IsEmpty()) << "it comes back as a new one";
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

    backEnd->selectDevice(device());
    simulator.configure(interface("eth1", {"C"})); // takes an interface away, with its device
    simulator.clearLog();
    pass();
    std::vector<std::string> closed = functionsOf(simulator.calls());
    std::erase_if(closed, [](const std::string &function) { return !function.ends_with("Close"); });
    EXPECT_THAT(closed, ElementsAre("DevClose", "IFClose", "DevClose")) << "the last one is of a probe";
    taken = backEnd->takeRetired();
    EXPECT_EQ(taken.size(), 2u);
    simulator.configure(interface("eth1", {}));
    pass();
    pass();
    EXPECT_THAT(backEnd->takeRetired(), IsEmpty()) << "freed by the back end";
}

TEST_F(TreeTest, OneIdentifierOnTwoInterfaces)
{
    const std::vector<std::string> with{"X"};
    const std::vector<std::string> without;
    for (const std::size_t remaining : {0U, 1U}) {
        startWith(interface("eth0", with) + interface("eth1", with));
        ASSERT_THAT(ids(), ElementsAre("X", "X"));
        Device *survivor = device(remaining);
        simulator.configure(interface("eth0", remaining == 0 ? with : without) +
                            interface("eth1", remaining == 1 ? with : without));
        pass();
        ASSERT_THAT(ids(), ElementsAre("X")) << remaining;
        EXPECT_EQ(device(), survivor);
        simulator.configure(interface("eth0", without) + interface("eth1", without));
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

TEST_F(TreeTest, TheEndClosesChildrenFirstAndFailuresAreWarnings)
{
    for (const char *function : {"DevClose", "IFClose", "TLClose", "GCCloseLib"}) {
        // The probe and the version query come before.
        const bool second = std::string(function) == "DevClose" || std::string(function) == "GCCloseLib";
        fail(function, second ? 2 : 1);
    }
    select();
    EXPECT_EQ(end(), failed("DevClose()", "WARNING") + failed("IFClose()", "WARNING") +
                         failed("TLClose()", "WARNING") + "WARNING: GCCloseLib() failed with code -1010!\n");
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
    const auto failing = [&](const std::string &function, const std::string &condition, std::uint64_t n = 1) {
        simulator.configure(interface("eth0", {}));
        fail(function, n, 1, condition);
    };
    const auto answer = [](std::string (GenTLLibrary::*query)() const,
                           const std::string &cti = Simulator::cti()) {
        return printedBy([&] { EXPECT_EQ((GenTLLibrary(cti).*query)(), ""); });
    };
    failing("GCGetInfo", "command = 1\n");
    EXPECT_EQ(answer(&GenTLLibrary::vendor), failed("GCGetInfo(TL_INFO_VENDOR) (size inquiry)", "WARNING"));
    failing("GCGetInfo", "command = 1\n", 2);
    EXPECT_EQ(answer(&GenTLLibrary::vendor), failed("GCGetInfo(TL_INFO_VENDOR)", "WARNING"));
    failing("GCGetInfo", "command = 3\n");
    EXPECT_EQ(answer(&GenTLLibrary::version), failed("GCGetInfo(TL_INFO_VERSION)", "WARNING"));
    EXPECT_EQ(answer(&GenTLLibrary::vendor, Simulator::cti("backend_odd_vendor")),
              "WARNING: GCGetInfo(TL_INFO_VENDOR) delivered an unexpected data type 5!\n");
    failing("IFGetInfo", "");
    EXPECT_EQ(printedBy([&] {
                  GenTLLibrary library(Simulator::cti());
                  library.openTL();
                  RetiredObjects retired;
                  library.updateInterfaces(true, retired);
                  EXPECT_EQ(library.interfaces().at(0)->displayName(), "");
              }),
              failed("IFGetInfo(INTERFACE_INFO_DISPLAYNAME)"));
}

// A pass beside the window's operations, with cameras that come and go: whatever meets whatever, each handle is closed
// by the one DevClose, and nothing is touched that has been freed.
TEST_F(TreeTest, APassBesideOperations)
{
    const auto camera = [](const std::string &id) {
        return "[[interface.camera]]\nid = \"" + id + "\"\nlock = \"locked\"\nreboot_ms = 1\n";
    };
    const std::string both =
        interface("eth0", {}) + camera("A") + camera("B") + interface("eth1", {}) + camera("C");
    const std::string few = interface("eth0", {}) + camera("B") + interface("eth1", {});
    simulator.configure(both);
    start();
    std::atomic<bool> finished = false;
    std::mutex handover; // as the window's, for what has been retired
    std::deque<RetiredObjects> announced;
    int operations = 0;

    const std::string printed = printedBy([&] {
        std::thread passes([&] {
            for (int i = 0; i < 150; ++i) {
                simulator.configure(i % 2 == 0 ? few : both);
                backEnd->updateDevices();
                for (const Device *known : backEnd->devices()) // as the rows of the list ask
                    static_cast<void>(known->isOpen() || known->isLocked() || known->isDefaultPassword());
                const std::lock_guard guard(handover);
                announced.push_back(backEnd->takeRetired());
            }
            finished = true;
        });
        while (!finished) {
            {
                const std::lock_guard guard(handover);
                while (announced.size() > 1) { // what went in a pass is freed behind the pass after that
                    backEnd->freeRetired(std::move(announced.front()));
                    announced.pop_front();
                }
            }
            for (Device *known : backEnd->devices()) {
                backEnd->selectDevice(known);
                backEnd->changePassword("mapleoak", "hunter22"); // where it has been reset
                backEnd->unlock("hunter22", false);
                backEnd->lock();
                if (++operations % 5 == 0)
                    backEnd->factoryResetSelected();
                known->close(false);
            }
        }
        passes.join();
        backEnd.reset();
    });
    EXPECT_THAT(printed, testing::Not(HasSubstr("DevClose() failed")));
    EXPECT_EQ(simulator.openHandles(), 0);
}

TEST_F(TreeTest, AProducerWhoseCloseFailedStaysLoaded)
{
    const std::pair<std::string, std::uint64_t> rows[] = {
        {"none", 1}, {"DevClose", 2}, {"IFClose", 1}, {"TLClose", 1}, {"GCCloseLib", 2}};
    for (const auto &[function, n] : rows) {
        const std::string folder = installProducer(function);
        search(folder);
        simulator.configure(Simulator::oneCamera);
        if (function != "none")
            fail(function, n);
        backEnd = std::make_unique<BackEnd>();
        select();
        end();
        const void *module = dlopen((folder + "/producer.cti").c_str(), RTLD_LAZY | RTLD_NOLOAD);
        EXPECT_EQ(module != nullptr, function != "none") << function;
    }
}

} // namespace
