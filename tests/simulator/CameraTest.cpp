// SPDX-License-Identifier: MIT
// What a camera does, seen through its registers: the password lock, the factory reset, the description and
// the features behind it.
#include "Client.h"

#include <gmock/gmock.h>

#include <chrono>
#include <fstream>
#include <thread>

using testing::HasSubstr;

namespace {

std::string cameraWith(const std::string &keys)
{
    return "[[interface]]\nid = \"sim-eth0\"\n[[interface.camera]]\nid = \"sim-1\"\n" + keys;
}

class CameraTest : public OpenCameraTest
{
protected:
    std::string state() { return client.read(camera.port, lockState, 8); }

    static constexpr char locked[] = "01 00 00 00 01 00 00 00";
    static constexpr char unlocked[] = "00 00 00 00 01 00 00 00";
    static constexpr char lockedOnDefault[] = "01 00 00 00 00 00 00 00";
};

TEST_F(CameraTest, TheLockTakesTheRightPasswordInTheRightShape)
{
    const struct
    {
        const char *name;
        std::uint64_t address;
        std::string bytes;
        GC_ERROR code;
        const char *state; // behind it
    } steps[] = {
        {"a wrong password, taken in silence", unlockPassword, "hunter23", GC_ERR_SUCCESS, locked},
        {"a new one while locked", newPassword, "sesame\0\0"s, GC_ERR_ACCESS_DENIED, locked},
        {"the right one", unlockPassword, "hunter22", GC_ERR_SUCCESS, unlocked},
        {"a wrong one while unlocked", unlockPassword, "hunter23", GC_ERR_SUCCESS, unlocked},
        {"4 bytes", unlockPassword, "hunt", GC_ERR_INVALID_VALUE, unlocked},
        {"no multiple of 4", unlockPassword, "hunter22!", GC_ERR_INVALID_VALUE, unlocked},
        {"longer than the register", newPassword, std::string(68, 'x'), GC_ERR_INVALID_ADDRESS, unlocked},
        {"an empty password", newPassword, std::string(8, '\0'), GC_ERR_INVALID_VALUE, unlocked},
        {"into the middle of the register", newPassword + 4, "hunter22", GC_ERR_ACCESS_DENIED, unlocked},
        {"an unknown command", commandRegister, "\2\0\0\0"s, GC_ERR_INVALID_VALUE, unlocked},
        {"a command of 8 bytes", commandRegister, "\1\0\0\0\0\0\0\0"s, GC_ERR_INVALID_VALUE, unlocked},
        {"the lock state", lockState, "\1\0\0\0"s, GC_ERR_ACCESS_DENIED, unlocked},
        {"no register", 0x50003000, "hunter22", GC_ERR_INVALID_ADDRESS, unlocked},
        {"nothing", unlockPassword, "", GC_ERR_INVALID_PARAMETER, unlocked},
        {"lock", commandRegister, "\1\0\0\0"s, GC_ERR_SUCCESS, locked},
        {"the right one, which nothing has changed", unlockPassword, "hunter22", GC_ERR_SUCCESS, unlocked},
        {"a new one", newPassword, "sesame\0\0"s, GC_ERR_SUCCESS, unlocked},
        {"lock again", commandRegister, "\1\0\0\0"s, GC_ERR_SUCCESS, locked},
        {"the old one", unlockPassword, "hunter22", GC_ERR_SUCCESS, locked},
        {"the new one, with more zeros", unlockPassword, "sesame\0\0\0\0\0\0"s, GC_ERR_SUCCESS, unlocked},
    };
    for (const auto &step : steps) {
        EXPECT_EQ(client.write(camera.port, step.address, step.bytes), step.code) << step.name;
        EXPECT_EQ(state(), step.state) << step.name;
    }
}

TEST_F(CameraTest, ReadsStayWithinReadableRegisters)
{
    EXPECT_EQ(client.read(camera.port, lockState + 2, 4), "00 00 01 00") << "across two registers";
    client.write(camera.port, 0x60000004, "\0\0\0\1"sv);
    EXPECT_EQ(client.read(camera.port, 0x60000004, 4), "00 00 00 00") << "the latch command clears itself";
    EXPECT_EQ(client.read(camera.port, passwordState, 8), "");
    EXPECT_EQ(client.code, GC_ERR_ACCESS_DENIED);
    EXPECT_EQ(client.lastError(), "the register at 0x50001008 can only be written");
    EXPECT_EQ(client.read(camera.port, ~std::uint64_t{0}, 8), "");
    EXPECT_EQ(client.code, GC_ERR_INVALID_ADDRESS);
    EXPECT_EQ(client.lastError(), "no register at 0xffffffffffffffff");
}

TEST_F(CameraTest, FactoryResetMakesItVanishAndComeBackLockedOnTheDefaultPassword)
{
    reopen(cameraWith("password = \"hunter22\"\nreboot_ms = 300"));
    client.write(camera.port, unlockPassword, "hunter22");
    EXPECT_EQ(client.write(camera.port, commandRegister, resetCommand), GC_ERR_SUCCESS);

    EXPECT_EQ(state(), "");
    EXPECT_EQ(client.code, GC_ERR_IO);
    EXPECT_EQ(client.lastError(), "camera \"sim-1\": reboots");
    EXPECT_THAT(client.devices(camera.interface), testing::IsEmpty());

    while (client.devices(camera.interface).empty())
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(state(), "") << "the handle from before the reset lives again";
    client.DevClose(camera.device);
    camera.port = client.port(client.openDevice(camera.interface));
    EXPECT_EQ(state(), lockedOnDefault);
    client.write(camera.port, unlockPassword, "mapleoak");
    EXPECT_EQ(state(), "00 00 00 00 00 00 00 00");
}

TEST_F(CameraTest, ACameraWithoutLockHasNoPasswordRegisters)
{
    reopen(cameraWith("lock = \"none\""));
    EXPECT_EQ(state(), "");
    EXPECT_EQ(client.write(camera.port, unlockPassword, "hunter22"), GC_ERR_INVALID_ADDRESS);
}

/// The description as a consumer finds it: by the queries of the port's first URL.
class DescriptionTest : public OpenCameraTest
{
protected:
    std::string info(URL_INFO_CMD command)
    {
        return client.query(client.GCGetPortURLInfo, camera.port, 0u, command);
    }

    /// The file, by one read of its whole length.
    std::string load(const std::string &keys)
    {
        reopen(cameraWith(keys));
        EXPECT_EQ(info(URL_INFO_SCHEME), "\0\0\0\0"s) << "local";
        EXPECT_EQ(info(URL_INFO_FILE_REGISTER_ADDRESS), "\0\0\0\xf0\0\0\0\0"s);
        std::uint64_t size = 0;
        info(URL_INFO_FILE_SIZE).copy(reinterpret_cast<char *>(&size), sizeof size);
        return client.readBytes(camera.port, 0xf0000000, size);
    }
};

TEST_F(DescriptionTest, TheUrlTellsWhatTheQueriesTell)
{
    const std::string file = load("model = \"Cam & <1>\"");
    char size[20];
    std::snprintf(size, sizeof size, "%zX", file.size());
    EXPECT_STREQ(info(URL_INFO_URL).c_str(),
                 ("local:///Cam____1_.xml;F0000000;" + std::string(size) + "?SchemaVersion=1.1.0").c_str());
    EXPECT_STREQ(info(URL_INFO_FILENAME).c_str(), "Cam____1_.xml");
    EXPECT_THAT(file, HasSubstr("ModelName=\"Cam &amp; &lt;1>\""));
    EXPECT_THAT(file, testing::EndsWith("</RegisterDescription>\n"));
    EXPECT_EQ(client.read(camera.port, 0xf0000000 + file.size() - 1, 2), "") << "a read beyond the file";
    EXPECT_EQ(client.code, GC_ERR_INVALID_ADDRESS);

    EXPECT_THAT(file, HasSubstr("<Integer Name=\"GevCurrentIPAddress\""));
    EXPECT_THAT(load("type = \"U3V\""), testing::Not(HasSubstr("Gev"))) << "no feature of a network";
}

TEST_F(DescriptionTest, AFileOfTheUserAndAnotherUrlReplaceTheBuiltInOnes)
{
    std::ofstream(simulator.folder() / "own.xml") << "<own/>";
    EXPECT_EQ(load("xml = \"own.xml\"\nurl = \"http://nowhere\"\nport_name = \"Other\""), "<own/>");
    EXPECT_STREQ(info(URL_INFO_URL).c_str(), "http://nowhere");
    EXPECT_STREQ(client.query(client.GCGetPortInfo, camera.port, PORT_INFO_PORTNAME).c_str(), "Other");
}

} // namespace
