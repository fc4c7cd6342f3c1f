// SPDX-License-Identifier: MIT
// Each call of a whole session fails once, and each function for ever: whatever fails, the session ends, the
// process lives, and every handle that was opened is closed.
#include "BackEndFixture.h"

#include <filesystem>

namespace {

// All functions that the session calls.
const char *const functions[] = {
    "GCInitLib",       "GCCloseLib",      "GCGetInfo",          "GCGetLastError",   "TLOpen",
    "TLClose",         "IFClose",         "TLGetNumInterfaces", "TLGetInterfaceID", "TLUpdateInterfaceList",
    "TLOpenInterface", "IFGetNumDevices", "IFGetDeviceID",      "IFGetDeviceInfo",  "IFUpdateDeviceList",
    "IFOpenDevice",    "DevGetPort",      "DevGetInfo",         "DevClose",         "GCReadPort",
    "GCWritePort",     "GCGetPortInfo",   "GCGetPortURLInfo",
};

class FaultTest : public BackEndTest, public testing::WithParamInterface<const char *>
{
protected:
    // List, unlock, change, lock, reset, in the console's way.
    void session()
    {
        printedBy([this] {
            backEnd = std::make_unique<BackEnd>();
            backEnd->discoverLibraries(true);
            backEnd->updateDevices();
            if (!backEnd->devices().empty())
                backEnd->selectDevice(device());
            backEnd->unlock("hunter22", false);
            backEnd->changePassword("hunter22", "sunny77");
            backEnd->changePassword("sunny77", "hunter22");
            backEnd->lock();
            backEnd->updateDevices();
            backEnd->printDevices(true);
            backEnd->factoryResetSelected();
            backEnd->updateDevices();
            backEnd.reset();
        });
    }

    // A producer with one fault leaves nothing open but the one handle whose close it refuses.
    const bool refusesClose = std::string_view(GetParam()).find("Close") != std::string_view::npos;
};

TEST_P(FaultTest, EachCallOnceAndThenForEver)
{
    // The calls of the function in a session of which it fails from the n-th call on.
    const auto callsWhenFailing = [this](std::uint64_t n, std::uint64_t count) {
        simulator.configure(Simulator::oneCamera);
        std::filesystem::remove(simulator.statePath());
        simulator.failNth(GetParam(), -1010, n, count);
        if (std::string_view(GetParam()) ==
            "GCGetLastError") // which is asked for only behind another failure
            simulator.failNth("DevGetInfo", -1010, 1, 0);
        simulator.clearLog();
        session();
        return simulator.calls(GetParam()).size();
    };
    std::uint64_t n = 1;
    while (callsWhenFailing(n, 1) >= n && !HasFailure()) {
        EXPECT_LE(simulator.openHandles(), refusesClose ? 1 : 0) << "call " << n;
        ++n;
    }
    EXPECT_GT(n, 1u) << "the session does not get so far";
    callsWhenFailing(1, 0);
    EXPECT_TRUE(refusesClose || simulator.openHandles() == 0) << "for ever";
}

INSTANTIATE_TEST_SUITE_P(Functions, FaultTest, testing::ValuesIn(functions),
                         [](const auto &info) { return std::string(info.param); });

} // namespace
