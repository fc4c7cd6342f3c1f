// SPDX-License-Identifier: MIT
// A consumer of one producer as a test writes it: the module loaded by the dynamic loader, and the functions
// by name.
#pragma once

#include "GenTL.h"
#include "Simulator.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Loads a module and, at the end, lets go of it. Nothing is initialised or closed on its own.
class Client
{
    void *const module; // before the functions, which are looked up in it

public:
    /// \throws std::runtime_error  in the loader's words
    explicit Client(const std::string &cti);
    Client(const Client &) = delete;
    Client &operator=(const Client &) = delete;
    ~Client();

    /// Asks a two-step query for its size and then for its answer.
    /// \returns its bytes, a text with its terminator; empty on failure
    template <class Function, class... Arguments>
    std::string query(Function function, Arguments... arguments)
    {
        std::size_t size = 0;
        code = function(arguments..., &type, nullptr, &size);
        std::string bytes(size, '?');
        if (code == GC_ERR_SUCCESS)
            code = function(arguments..., &type, bytes.data(), &size);
        return code == GC_ERR_SUCCESS ? bytes : "";
    }

    /// The text of this thread's last error.
    std::string lastError() const;

    // The usual road to a camera. Each stores its code in `code`.
    void init() { code = GCInitLib(); }
    void close() { code = GCCloseLib(); }
    TL_HANDLE openTL();
    IF_HANDLE openInterface(TL_HANDLE tl, const char *id = "sim-eth0");
    DEV_HANDLE openDevice(IF_HANDLE interface, const char *id = "sim-1",
                          DEVICE_ACCESS_FLAGS access = DEVICE_ACCESS_CONTROL);
    PORT_HANDLE port(DEV_HANDLE device);
    std::vector<std::string> devices(IF_HANDLE interface); ///< after a refresh
    std::int32_t accessStatus(IF_HANDLE interface, const char *id = "sim-1");

    /// "01 00 00 00", or empty on failure.
    std::string read(PORT_HANDLE port, std::uint64_t address, std::size_t size);
    std::string readBytes(PORT_HANDLE port, std::uint64_t address, std::size_t size);
    GC_ERROR write(PORT_HANDLE port, std::uint64_t address, std::string_view bytes);

    GC_ERROR code = 0;
    INFO_DATATYPE type = -1; ///< of the last query

private:
    void *symbol(const char *name) const;

public:
    /// The functions by their names, null where the module lacks one: client.TLOpen(&tl).
#define FUNCTION(name) const P##name name = reinterpret_cast<P##name>(symbol(#name));
#include "Functions.inc"
#undef FUNCTION
};

/// A camera opened with control: initialised library, TL, interface, device and port.
struct OpenCamera
{
    explicit OpenCamera(Client &client, const char *id = "sim-1",
                        DEVICE_ACCESS_FLAGS access = DEVICE_ACCESS_CONTROL);

    TL_HANDLE tl;
    IF_HANDLE interface;
    DEV_HANDLE device;
    PORT_HANDLE port;
};

/// A test with the simulator's one camera, opened with control.
class OpenCameraTest : public testing::Test
{
protected:
    /// Begins anew with other cameras.
    void reopen(const std::string &toml)
    {
        simulator.configure(toml);
        client.close();
        camera = OpenCamera(client);
    }

    Simulator simulator;
    Client client{Simulator::cti()};
    OpenCamera camera{client};
};

inline constexpr std::uint64_t lockState = 0x50001000;
inline constexpr std::uint64_t passwordState = 0x50001004;
inline constexpr std::uint64_t commandRegister = 0x50001008;
inline constexpr std::uint64_t newPassword = 0x50002000;
inline constexpr std::uint64_t unlockPassword = 0x50002040;

// The values of the registers as they travel.
using namespace std::string_literals;
using namespace std::string_view_literals;
inline constexpr std::string_view lockCommand = "\1\0\0\0"sv;
inline constexpr std::string_view resetCommand = "\x80\0\0\0"sv;
