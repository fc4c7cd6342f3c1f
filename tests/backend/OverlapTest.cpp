// SPDX-License-Identifier: MIT
// A pass that comes in the middle of what the window does to a device, and the other way round. What another thread
// would do meanwhile is done within a call of the producer, so that it happens there every time.
#include "BackEndFixture.h"
#include "GenTLLibrary.h"
#include "GenTL_Interface.h"
#include "TLInterface.h"

#include <gmock/gmock.h>

#include <utility>

using testing::ElementsAre;

namespace {

std::function<void()> meanwhile; // in the next call of a function below, once
PIFOpenDevice openDevice = nullptr;
PDevClose closeDevice = nullptr;

void interrupt()
{
    if (const auto action = std::exchange(meanwhile, nullptr))
        action();
}

GC_ERROR interruptAndOpen(IF_HANDLE interface, const char *id, DEVICE_ACCESS_FLAGS flags, DEV_HANDLE *device)
{
    interrupt();
    return openDevice(interface, id, flags, device);
}

GC_ERROR interruptAndClose(DEV_HANDLE device)
{
    interrupt();
    return closeDevice(device);
}

template <class Pointer>
struct Entry : GenICam_Interfaces::GenTL_Function<Pointer>
{
    static Pointer exchange(GenICam_Interfaces::GenTL_Function<Pointer> &function, Pointer replacement)
    {
        return std::exchange(function.*(&Entry::entry), replacement);
    }
};

class OverlapTest : public BackEndTest
{
protected:
    OverlapTest()
    {
        library.openTL();
        library.updateInterfaces(true, retired);
        interface = library.interfaces().at(0);
        interface->updateDeviceList(retired);
        device = interface->devices().at(0);
        const auto gentl = library.gentl();
        openDevice = Entry<PIFOpenDevice>::exchange(gentl->IFOpenDevice, interruptAndOpen);
        closeDevice = Entry<PDevClose>::exchange(gentl->DevClose, interruptAndClose);
        simulator.clearLog();
    }

    /// Opening and closing calls, as they ended.
    std::vector<std::string> traffic() const
    {
        std::vector<std::string> result;
        for (const std::string &call : simulator.calls())
            if (call.starts_with("IFOpenDevice") || call.find("Close(") != std::string::npos)
                result.push_back(call.substr(0, call.find('(')) + call.substr(call.find(" = "), 4));
        return result;
    }

    void vanish() { interface->retire(retired); }

    GenTLLibrary library{Simulator::cti()};
    RetiredObjects retired;
    TLInterface *interface = nullptr;
    Device *device = nullptr;
};

const auto closedInOrder = ElementsAre("IFOpenDevice = 0", "DevClose = 0", "IFClose = 0");
const auto openedOnce = ElementsAre("IFOpenDevice = 0", "DevClose = 0");

TEST_F(OverlapTest, AnInterfaceThatVanishesIsClosedBehindItsCamera)
{
    meanwhile = [this] { vanish(); };
    device->open();
    EXPECT_FALSE(device->isOpen());
    EXPECT_THAT(traffic(), closedInOrder);
}

TEST_F(OverlapTest, AnInterfaceThatVanishesWhileItsCameraIsClosed)
{
    device->open();
    meanwhile = [this] { vanish(); };
    device->close(true);
    EXPECT_THAT(traffic(), closedInOrder);
}

TEST_F(OverlapTest, APassDoesNotProbeWhatTheWindowHolds)
{
    const auto probe = [this] { device->probe(); };
    meanwhile = probe;
    device->open();
    EXPECT_TRUE(device->isOpen());
    probe();
    meanwhile = probe;
    device->close(false);
    EXPECT_THAT(traffic(), openedOnce);
}

TEST_F(OverlapTest, TheWindowNeitherOpensNorClosesWhatAPassProbes)
{
    const auto openAndClose = [this] {
        device->open();
        EXPECT_FALSE(device->isOpen());
        device->close(false);
    };
    meanwhile = openAndClose;
    device->probe();
    EXPECT_TRUE(device->isLocked()) << "probed to its end";
    EXPECT_THAT(traffic(), openedOnce);
}

} // namespace
