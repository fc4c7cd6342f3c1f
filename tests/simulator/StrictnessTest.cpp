// SPDX-License-Identifier: MIT
// Each misuse of the interface has a code and a text of its own.
#include "Client.h"
#include "Simulator.h"

#include <gmock/gmock.h>

#include <functional>

namespace {

struct Misuse
{
    const char *name;
    std::function<GC_ERROR(Client &, OpenCamera &)> call;
    GC_ERROR code;
    const char *text;
};

std::ostream &operator<<(std::ostream &stream, const Misuse &misuse)
{
    return stream << misuse.name;
}

class StrictnessTest : public testing::TestWithParam<Misuse>
{
protected:
    Simulator simulator;
    Client client{Simulator::cti()};
    OpenCamera camera{client};
};

TEST_P(StrictnessTest, IsRefused)
{
    const Misuse &misuse = GetParam();
    EXPECT_EQ(misuse.call(client, camera), misuse.code);
    EXPECT_EQ(client.lastError(), misuse.text);
}

void *handleOut = nullptr;
char buffer[4];
INFO_DATATYPE typeOut = 0;
std::size_t sizeOf4 = sizeof buffer;

const Misuse initialization[] = {
    {"second GCInitLib", [](Client &c, OpenCamera &) { return c.call<PGCInitLib>("GCInitLib")(); },
     GC_ERR_RESOURCE_IN_USE, "the library is initialized already"},
    {"GCGetInfo after GCCloseLib",
     [](Client &c, OpenCamera &) {
         c.close();
         return c.call<PGCGetInfo>("GCGetInfo")(TL_INFO_ID, &typeOut, nullptr, &sizeOf4);
     },
     GC_ERR_NOT_INITIALIZED, "GCInitLib has not been called"},
    {"GCReadPort after GCCloseLib",
     [](Client &c, OpenCamera &camera) {
         c.close();
         c.read(camera.port, lockState, 4);
         return c.code;
     },
     GC_ERR_NOT_INITIALIZED, "GCInitLib has not been called"},
    {"second GCCloseLib",
     [](Client &c, OpenCamera &) {
         c.close();
         return c.call<PGCCloseLib>("GCCloseLib")();
     },
     GC_ERR_NOT_INITIALIZED, "GCInitLib has not been called"},
    {"handle of an earlier initialization",
     [](Client &c, OpenCamera &camera) {
         c.close();
         c.init();
         return c.call<PTLUpdateInterfaceList>("TLUpdateInterfaceList")(camera.tl, nullptr, 0);
     },
     GC_ERR_INVALID_HANDLE, "not a handle of this kind, or closed"},
};

const Misuse opening[] = {
    {"second TLOpen", [](Client &c, OpenCamera &) { return c.call<PTLOpen>("TLOpen")(&handleOut); },
     GC_ERR_RESOURCE_IN_USE, "the TL is open already"},
    {"second TLOpenInterface",
     [](Client &c, OpenCamera &camera) {
         return c.call<PTLOpenInterface>("TLOpenInterface")(camera.tl, "sim-eth0", &handleOut);
     },
     GC_ERR_RESOURCE_IN_USE, "interface \"sim-eth0\" is open already"},
    {"second IFOpenDevice",
     [](Client &c, OpenCamera &camera) {
         return c.call<PIFOpenDevice>("IFOpenDevice")(camera.interface, "sim-1", DEVICE_ACCESS_READONLY,
                                                      &handleOut);
     },
     GC_ERR_RESOURCE_IN_USE, "camera \"sim-1\" is open already"},
    {"unknown interface",
     [](Client &c, OpenCamera &camera) {
         return c.call<PTLOpenInterface>("TLOpenInterface")(camera.tl, "eth9", &handleOut);
     },
     GC_ERR_INVALID_ID, "no interface \"eth9\" in the list"},
    {"unknown camera",
     [](Client &c, OpenCamera &camera) {
         return c.call<PIFOpenDevice>("IFOpenDevice")(camera.interface, "sim-9", DEVICE_ACCESS_READONLY,
                                                      &handleOut);
     },
     GC_ERR_INVALID_ID, "no camera \"sim-9\" in the list"},
    {"open without access",
     [](Client &c, OpenCamera &camera) {
         c.call<PDevClose>("DevClose")(camera.device);
         return c.call<PIFOpenDevice>("IFOpenDevice")(camera.interface, "sim-1", DEVICE_ACCESS_NONE,
                                                      &handleOut);
     },
     GC_ERR_INVALID_PARAMETER, "no access to open with: 1"},
    {"data stream",
     [](Client &c, OpenCamera &camera) {
         return c.call<PDevOpenDataStream>("DevOpenDataStream")(camera.device, "0", &handleOut);
     },
     GC_ERR_INVALID_ID, "the camera has no data streams"},
};

const Misuse handles[] = {
    {"null handle", [](Client &c, OpenCamera &) { return c.call<PTLClose>("TLClose")(nullptr); },
     GC_ERR_INVALID_HANDLE, "the handle is null"},
    {"handle of another kind",
     [](Client &c, OpenCamera &camera) { return c.call<PIFClose>("IFClose")(camera.device); },
     GC_ERR_INVALID_HANDLE, "not a handle of this kind, or closed"},
    {"device handle after its close",
     [](Client &c, OpenCamera &camera) {
         c.call<PDevClose>("DevClose")(camera.device);
         c.openDevice(camera.interface);
         return c.call<PDevClose>("DevClose")(camera.device);
     },
     GC_ERR_INVALID_HANDLE, "not a handle of this kind, or closed"},
    {"port after the close of its device",
     [](Client &c, OpenCamera &camera) {
         c.call<PDevClose>("DevClose")(camera.device);
         c.read(camera.port, lockState, 4);
         return c.code;
     },
     GC_ERR_INVALID_HANDLE, "not a handle of this kind, or closed"},
    {"port after the close of its TL",
     [](Client &c, OpenCamera &camera) {
         c.call<PTLClose>("TLClose")(camera.tl);
         c.read(camera.port, lockState, 4);
         return c.code;
     },
     GC_ERR_INVALID_HANDLE, "not a handle of this kind, or closed"},
    {"no data stream handle",
     [](Client &c, OpenCamera &camera) { return c.call<PDSClose>("DSClose")(camera.device); },
     GC_ERR_INVALID_HANDLE, "not a data stream: the cameras have none"},
};

const Misuse arguments[] = {
    {"index beyond the list",
     [](Client &c, OpenCamera &camera) {
         return c.call<PIFGetDeviceID>("IFGetDeviceID")(camera.interface, 1, buffer, &sizeOf4);
     },
     GC_ERR_INVALID_INDEX, "no camera 1 in the list"},
    {"second URL",
     [](Client &c, OpenCamera &camera) {
         return c.call<PGCGetPortURLInfo>("GCGetPortURLInfo")(camera.port, 1, URL_INFO_URL, &typeOut, nullptr,
                                                              &sizeOf4);
     },
     GC_ERR_INVALID_INDEX, "the port has no URL 1"},
    {"too small buffer",
     [](Client &c, OpenCamera &camera) {
         return c.call<PIFGetDeviceID>("IFGetDeviceID")(camera.interface, 0, buffer, &sizeOf4);
     },
     GC_ERR_BUFFER_TOO_SMALL, "the buffer has 4 bytes; 6 are needed"},
    {"unknown query",
     [](Client &c, OpenCamera &camera) {
         return c.call<PDevGetInfo>("DevGetInfo")(camera.device, 77, &typeOut, nullptr, &sizeOf4);
     },
     GC_ERR_INVALID_PARAMETER, "unknown device query 77"},
    {"no place for the size",
     [](Client &c, OpenCamera &camera) {
         return c.call<PDevGetInfo>("DevGetInfo")(camera.device, DEVICE_INFO_ID, &typeOut, nullptr, nullptr);
     },
     GC_ERR_INVALID_PARAMETER, "the pointer to the size is null"},
    {"no place for the handle", [](Client &c, OpenCamera &) { return c.call<PTLOpen>("TLOpen")(nullptr); },
     GC_ERR_INVALID_PARAMETER, "the pointer to the handle is null"},
    {"no identifier",
     [](Client &c, OpenCamera &camera) {
         return c.call<PTLOpenInterface>("TLOpenInterface")(camera.tl, nullptr, &handleOut);
     },
     GC_ERR_INVALID_PARAMETER, "the identifier is null"},
    {"registers of the host",
     [](Client &c, OpenCamera &camera) {
         c.read(camera.device, 0, 4);
         return c.code;
     },
     GC_ERR_NOT_IMPLEMENTED, "this module has no registers"},
    {"write through a read-only open",
     [](Client &c, OpenCamera &camera) {
         c.call<PDevClose>("DevClose")(camera.device);
         const PORT_HANDLE port = c.port(c.openDevice(camera.interface, "sim-1", DEVICE_ACCESS_READONLY));
         return c.write(port, unlockPassword, "hunter22");
     },
     GC_ERR_ACCESS_DENIED, "camera \"sim-1\" was opened read-only"},
};

std::string rowName(const testing::TestParamInfo<Misuse> &row)
{
    std::string name = row.param.name;
    for (char &character : name)
        character = std::isalnum(static_cast<unsigned char>(character)) ? character : '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Initialization, StrictnessTest, testing::ValuesIn(initialization), rowName);
INSTANTIATE_TEST_SUITE_P(Opening, StrictnessTest, testing::ValuesIn(opening), rowName);
INSTANTIATE_TEST_SUITE_P(Handles, StrictnessTest, testing::ValuesIn(handles), rowName);
INSTANTIATE_TEST_SUITE_P(Arguments, StrictnessTest, testing::ValuesIn(arguments), rowName);

} // namespace
