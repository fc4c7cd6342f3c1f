// SPDX-License-Identifier: MIT
// The last error of a thread, the call log, and events.
#include "Client.h"

#include <gmock/gmock.h>

#include <chrono>
#include <thread>

using testing::ElementsAre;

namespace {

TEST(Module, TheLastErrorBelongsToTheThread)
{
    Simulator simulator;
    Client client{Simulator::cti()};
    client.TLClose(nullptr);
    std::string ofTheOther = "?";
    std::thread([&] { ofTheOther = client.lastError(); }).join();
    EXPECT_EQ(ofTheOther, "");

    GC_ERROR code = 0;
    char text[8];
    std::size_t size = sizeof text;
    EXPECT_EQ(client.GCGetLastError(&code, text, &size), GC_ERR_BUFFER_TOO_SMALL);
    EXPECT_EQ(client.GCGetLastError(&code, nullptr, &size), GC_ERR_SUCCESS);
    EXPECT_EQ(code, GC_ERR_NOT_INITIALIZED) << "a call that was too short has taken the record's place";
    EXPECT_EQ(size, sizeof "GCInitLib has not been called");
}

TEST_F(OpenCameraTest, TheLogShowsArgumentsCodesAndOutputsOfEachCall)
{
    EXPECT_THAT(simulator.calls(),
                ElementsAre("GCInitLib() = 0", "TLOpen() = 0 h1", "TLUpdateInterfaceList(h1, 1000) = 0 1",
                            "TLOpenInterface(h1, \"sim-eth0\") = 0 h2", "IFUpdateDeviceList(h2, 1000) = 0 1",
                            "IFOpenDevice(h2, \"sim-1\", 3) = 0 h3", "DevGetPort(h3) = 0 h4"));
    simulator.clearLog();
    client.query(client.IFGetDeviceInfo, camera.interface, "sim-1", DEVICE_INFO_MODEL);
    client.query(client.DevGetInfo, camera.device, DEVICE_INFO_TIMESTAMP_FREQUENCY);
    client.read(camera.port, 0xf0000000, 100);
    client.read(nullptr, 0, 4);
    client.lastError();
    char byte = 0;
    PORT_REGISTER_STACK_ENTRY stack[] = {{lockState, &byte, 1}, {0x1, &byte, 1}, {lockState, &byte, 1}};
    std::size_t count = 3;
    client.GCReadPortStacked(camera.port, stack, &count);
    EXPECT_EQ(count, 1u);
    EXPECT_THAT(simulator.calls(),
                ElementsAre("IFGetDeviceInfo(h2, \"sim-1\", 2, null) = 0 10",
                            "IFGetDeviceInfo(h2, \"sim-1\", 2) = 0 \"SimCam G5\"",
                            "DevGetInfo(h3, 9, null) = 0 8", "DevGetInfo(h3, 9) = 0 1000000000",
                            "GCReadPort(h4, 0xf0000000, 100) = 0 "
                            "[3c 3f 78 6d 6c 20 76 65 72 73 69 6f 6e 3d 22 31 ... 100 bytes]",
                            "GCReadPort(null, 0x0, 4) = -1006",
                            "GCGetLastError() = 0 -1006 \"the handle is null\"",
                            "GCReadPortStacked(h4, 3) = -1015"));
}

class EventTest : public OpenCameraTest
{
protected:
    EVENT_HANDLE registerAt(EVENTSRC_HANDLE source)
    {
        EVENT_HANDLE event = nullptr;
        client.code = client.GCRegisterEvent(source, EVENT_ERROR, &event);
        return event;
    }

    /// The text of the next event, or the code of the failure.
    std::string next(EVENT_HANDLE event, std::uint64_t timeout)
    {
        char data[300];
        std::size_t size = sizeof data;
        client.code = client.EventGetData(event, data, &size, timeout);
        if (client.code != GC_ERR_SUCCESS)
            return std::to_string(client.code);
        return client.query(client.EventGetDataInfo, event, data, size, EVENT_DATA_VALUE).c_str();
    }
};

TEST_F(EventTest, ALostCameraIsToldAtItsModuleAndAtThoseAbove)
{
    const EVENT_HANDLE events[] = {registerAt(camera.device), registerAt(camera.interface),
                                   registerAt(camera.tl)};
    EXPECT_EQ(registerAt(camera.device), nullptr);
    EXPECT_EQ(client.code, GC_ERR_RESOURCE_IN_USE);
    EXPECT_EQ(next(events[0], 0), std::to_string(GC_ERR_TIMEOUT));

    client.write(camera.port, commandRegister, resetCommand);
    for (const EVENT_HANDLE event : events) {
        EXPECT_EQ(next(event, 0), "camera \"sim-1\": reboots");
        EXPECT_EQ(next(event, 0), std::to_string(GC_ERR_TIMEOUT));
    }
    simulator.configure("nonsense = 1");
    client.devices(camera.interface);
    EXPECT_EQ(next(events[2], 0),
              simulator.configPath().string() + ":1: configuration: unknown key \"nonsense\"");
}

TEST_F(EventTest, AWaitEndsWithAnEventAKillOrTheEndOfItsModule)
{
    const EVENT_HANDLE event = registerAt(camera.device);
    std::string answer;
    const auto whileWaiting = [&](auto action) {
        std::thread waiter([&] { answer = next(event, GENTL_INFINITE); });
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        action();
        waiter.join();
        return answer;
    };
    EXPECT_EQ(whileWaiting([&] { client.EventKill(event); }), std::to_string(GC_ERR_ABORT));
    EXPECT_EQ(whileWaiting([&] { client.write(camera.port, commandRegister, resetCommand); }),
              "camera \"sim-1\": reboots");
    EXPECT_EQ(whileWaiting([&] { client.DevClose(camera.device); }), std::to_string(GC_ERR_ABORT));
    EXPECT_EQ(next(event, 0), std::to_string(GC_ERR_INVALID_HANDLE));
}

} // namespace
