// SPDX-License-Identifier: MIT
// Producers, interfaces and devices that come and go: the tree follows, in the stated order of calls, and
// nothing that a caller can still hold is freed too early.
#include "BackEndFixture.h"
#include "GenTLLibrary.h"
#include "LoadedModule.h"
#include "TLInterface.h"

#include <gmock/gmock.h>

#include <atomic>
#include <deque>
#include <filesystem>
#include <mutex>
#include <thread>
#include <tuple>

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class TreeTest : public BackEndTest
{
protected:
    // A folder with a copy of the producer, to be taken away again.
    std::string installProducer(const std::string &folder) const
    {
        const fs::path target = simulator.folder() / folder;
        fs::create_directories(target);
        fs::copy_file(Simulator::cti(), target / "producer.cti");
        return target.string();
    }

    // The calls that close, in their order.
    std::vector<std::string> closings() const
    {
        std::vector<std::string> result = functionsOf(simulator.calls());
        std::erase_if(result,
                      [](const std::string &name) { return name.find("Close") == std::string::npos; });
        return result;
    }

    // Configurations that count in one of two producers.
    const std::string first = "producer = \"torvane_sim\"\n";
    const std::string second = "producer = \"second\"\n";
};

TEST_F(TreeTest, ProducersAreFoundOnceAndStayWhenThereIsNone)
{
    const std::string folder = installProducer("only");
    search(folder);
    start();
    EXPECT_EQ(printedBy([this] { EXPECT_TRUE(backEnd->discoverLibraries(true)); }), "");
    EXPECT_EQ(simulator.calls("GCInitLib").size(), 2u) << "one for the version query, one for the session";
    testsystem::takeProducerAway(folder + "/producer.cti");
    EXPECT_EQ(printedBy([this] { EXPECT_FALSE(backEnd->discoverLibraries(true)); }),
              "No GenTL libraries detected!\n");
    EXPECT_EQ(pass(), "");
    EXPECT_THAT(ids(), ElementsAre("sim-1"));
}

// One lacks a function, and a file that is named twice is two libraries of one producer.
TEST_F(TreeTest, LibrariesWithoutAProducerAreSkipped)
{
    const std::string unusable = Simulator::cti("backend_no_start");
    const std::string folder = installProducer("twice");
    const std::string file = folder + static_cast<char>(fs::path::preferred_separator) + "producer.cti";
    search(folderOf(unusable) + ";" + folder + ";" + folder);
    const std::string failure = "ERROR: Creating the GenTL_Interface instance failed.\n       Msg: ";
    EXPECT_THAT(start(), AllOf(StartsWith(failure + "Computing address for function GCCloseLib of cti "),
                               EndsWith(failure + "Initializing " + file + " failed! Code: -1004.\n")));
    EXPECT_THAT(ids(), ElementsAre("sim-1"));
    EXPECT_EQ(printedBy([this] { backEnd->printLibraries(); }),
              "\nAvailable GenTL libraries:\n1) " + unusable + "\n2) " + file + "\n3) " + file + "\n");
    EXPECT_EQ(end(), "");
}

TEST_F(TreeTest, AProducerThatIsGoneIsClosed)
{
    const std::string gone = installProducer("first");
    search(gone + ";" + folderOf(Simulator::cti("backend_second")));
    simulator.configure(interface("eth0", {"A"}, first) + interface("eth1", {"B"}, second));
    start();
    ASSERT_THAT(ids(), ElementsAre("A", "B"));
    backEnd->selectDevice(device(0));
    testsystem::takeProducerAway(gone + "/producer.cti");
    simulator.clearLog();
    EXPECT_EQ(printedBy([this] { backEnd->discoverLibraries(true); }), "");
    EXPECT_THAT(functionsOf(simulator.calls()), ElementsAre("DevClose", "IFClose", "TLClose", "GCCloseLib"));
    EXPECT_THAT(ids(), ElementsAre("", "B")) << "switched off; the flat list learns of it in the next pass";
    pass();
    EXPECT_THAT(ids(), ElementsAre("B"));
    EXPECT_TRUE(backEnd->selectedIsLocked()) << "nothing is selected any more";
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

// A call fails in the first pass over a new configuration, and succeeds in the next one.
TEST_F(TreeTest, AFailedLevelHidesWhatIsBehindItUntilTheNextPass)
{
    const std::string a = interface("eth0", {"A"}, first);
    const std::string b = interface("eth1", {"B"}, first);
    const std::string c = interface("eth2", {"C"}, second);
    const std::string both = interface("eth0", {"A", "B"}, first);
    const std::string one = interface("eth0", {"B"}, first);
    const std::string five = interface("eth0", {"B", "C", "D", "E", "F"}, first);
    const struct
    {
        std::string before, after, call;
        std::uint64_t number;
        std::vector<std::string> found, foundThen;
    } rows[] = {
        {"", a + c, "TLOpen()", 1, {}, {"A", "C"}},
        {"", a + b + c, "TLOpenInterface()", 1, {"C"}, {"C", "A", "B"}},
        // A failure of the interface list leaves the known interfaces to be walked, one of the device list all as it is.
        {both, one, "TLUpdateInterfaceList()", 1, {"B"}, {"B"}},
        {both, one, "TLGetNumInterfaces()", 1, {"B"}, {"B"}},
        {both, one, "TLGetInterfaceID(0)", 1, {"B"}, {"B"}},
        {both, one, "IFUpdateDeviceList()", 1, {"A", "B"}, {"B"}},
        {both, one, "IFGetNumDevices()", 1, {"A", "B"}, {"B"}},
        {both, one, "IFGetDeviceID(0)", 1, {"A", "B"}, {"B"}},
        {both, five, "IFGetDeviceID(3)", 4, {"A", "B", "C", "D"}, {"B", "C", "D", "E", "F"}}};
    search(folderOf(Simulator::cti()) + ";" + folderOf(Simulator::cti("backend_second")));
    for (const auto &row : rows) {
        if (!row.before.empty())
            startWith(row.before);
        simulator.configure(row.after);
        fail(row.call.substr(0, row.call.find('(')), row.number, 1, first);
        const std::string printed = row.before.empty() ? start() : pass();
        EXPECT_THAT(printed, StartsWith(failed(row.call)));
        EXPECT_EQ(ids(), row.found) << row.call;
        pass();
        EXPECT_EQ(ids(), row.foundThen) << row.call;
    }
    simulator.configure("");
    const std::string none = "No interfaces detected!\nNo interfaces detected!\n"; // of each library
    EXPECT_EQ(pass() + pass(), none + none) << "on every pass";
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(TreeTest, KnownDevicesStayNewOnesAreProbedOnceAndGoneOnesSwitchedOff)
{
    simulator.configure(interface("eth0", {"A", "B", "C"}));
    start();
    const std::vector<Device *> before = backEnd->devices();
    backEnd->selectDevice(before[1]);
    before[1]->rememberPassword("hunter22");
    simulator.configure(interface("eth0", {"D", "C", "A"}));
    simulator.clearLog();
    EXPECT_EQ(pass(), "");
    EXPECT_THAT(ids(), ElementsAre("A", "C", "D")) << "in order of first sight";
    EXPECT_EQ(device(0), before[0]);
    EXPECT_EQ(device(1), before[2]);
    EXPECT_EQ(simulator.calls("IFOpenDevice").size(), 1u);
    EXPECT_EQ(simulator.calls("DevClose").size(), 2u);
    EXPECT_EQ(simulator.lockTraffic(), "locked locked user locked user") << "of the new one alone";
    EXPECT_THAT(backEnd->selectedPasswordHistory(), IsEmpty()) << "nothing is selected";
    EXPECT_EQ(before[1]->id() + before[1]->model(), "") << "switched off";
    simulator.clearLog();
    pass();
    EXPECT_THAT(functionsOf(simulator.calls()),
                ElementsAre("TLUpdateInterfaceList", "TLGetNumInterfaces", "TLGetInterfaceID",
                            "IFUpdateDeviceList", "IFGetNumDevices", "IFGetDeviceID", "IFGetDeviceID",
                            "IFGetDeviceID"))
        << "a quiet pass only enumerates";
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
    EXPECT_THAT(closings(), ElementsAre("DevClose", "IFClose", "DevClose")) << "the last one is of a probe";
    taken = backEnd->takeRetired();
    EXPECT_EQ(taken.size(), 2u);
    simulator.configure(interface("eth1", {}));
    pass();
    pass();
    EXPECT_THAT(backEnd->takeRetired(), IsEmpty()) << "freed by the back end";
}

TEST_F(TreeTest, OneIdentifierOnTwoInterfaces)
{
    const std::string eth0 = interface("eth0", {"X"});
    startWith(eth0 + interface("eth1", {"X"}));
    ASSERT_THAT(ids(), ElementsAre("X", "X"));
    Device *survivor = device(0);
    simulator.configure(eth0 + interface("eth1", {}));
    pass();
    ASSERT_THAT(ids(), ElementsAre("X"));
    EXPECT_EQ(device(), survivor);
}

TEST_F(TreeTest, AFailedCloseIsAWarningAndKeepsTheProducerLoaded)
{
    // With the number of the call, behind the probe and the version query.
    const std::tuple<std::string, std::uint64_t, std::string> rows[] = {
        {"none", 1, ""},
        {"DevClose", 2, failed("DevClose()", "WARNING")},
        {"IFClose", 1, failed("IFClose()", "WARNING")},
        {"TLClose", 1, failed("TLClose()", "WARNING")},
        {"GCCloseLib", 2, "WARNING: GCCloseLib() failed with code -1010!\n"}};
    for (const auto &[function, number, printed] : rows) {
        const std::string folder = installProducer(function);
        search(folder);
        simulator.configure(Simulator::oneCamera);
        if (!printed.empty())
            fail(function, number);
        select();
        EXPECT_EQ(end(), printed);
        EXPECT_THAT(closings(), ElementsAre("DevClose", "IFClose", "TLClose", "GCCloseLib"));
        EXPECT_EQ(testsystem::isLoaded(folder + "/producer.cti"), !printed.empty()) << function;
    }
}

TEST_F(TreeTest, WhatLibrariesAndInterfacesSayOfThemselves)
{
    simulator.configure("[producer]\nversion = \"1.4\"\n" + interface("eth0", {}, "name = \"Port one\"\n"));
    const auto said = [](const std::string &producer) {
        GenTLLibrary library(producer);
        library.openTL();
        RetiredObjects retired;
        library.updateInterfaces(true, retired); // which opens them at once
        std::string text = library.vendor();
        text += '|' + library.version();
        text += '|' + library.getGenTLVersionString();
        for (const TLInterface *interface : library.interfaces())
            text += '|' + interface->displayName();
        return text;
    };
    EXPECT_EQ(said(Simulator::cti()), "Torvane|1.0.0|V1.4|Port one");
    fail("GCGetInfo", 3, 0); // behind the version query
    fail("IFGetInfo", 1, 0);
    EXPECT_EQ(printedBy([&] { EXPECT_EQ(said(Simulator::cti()), "||V1.4|"); }),
              failed("GCGetInfo(TL_INFO_VENDOR) (size inquiry)", "WARNING") +
                  failed("GCGetInfo(TL_INFO_VERSION)", "WARNING") +
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
    EXPECT_THAT(printed, testing::Not(testing::HasSubstr("DevClose() failed")));
    EXPECT_EQ(simulator.openHandles(), 0);
}

} // namespace
