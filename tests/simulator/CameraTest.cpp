// SPDX-License-Identifier: MIT
// What a camera does, seen through its registers: the password lock, the factory reset, the description and
// the features behind it.
#include "Client.h"
#include "Simulator.h"

#include <gmock/gmock.h>

#include <chrono>
#include <fstream>
#include <thread>

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

std::string cameraWith(const std::string &keys)
{
    return "[[interface]]\nid = \"sim-eth0\"\n[[interface.camera]]\nid = \"sim-1\"\n" + keys;
}

class CameraTest : public testing::Test
{
protected:
    std::string state() { return client.read(camera.port, lockState, 8); }

    static constexpr char locked[] = "01 00 00 00 01 00 00 00";
    static constexpr char unlocked[] = "00 00 00 00 01 00 00 00";
    static constexpr char lockedOnDefault[] = "01 00 00 00 00 00 00 00";

    Simulator simulator;
    Client client{Simulator::cti()};
    OpenCamera camera{client};
};

TEST_F(CameraTest, OnlyTheRightPasswordUnlocksAndAWrongOneIsAcceptedInSilence)
{
    EXPECT_EQ(state(), locked);
    EXPECT_EQ(client.write(camera.port, unlockPassword, "hunter23"), GC_ERR_SUCCESS);
    EXPECT_EQ(state(), locked);
    EXPECT_EQ(client.write(camera.port, unlockPassword, "hunter22"), GC_ERR_SUCCESS);
    EXPECT_EQ(state(), unlocked);
    EXPECT_EQ(client.write(camera.port, unlockPassword, "hunter23"), GC_ERR_SUCCESS);
    EXPECT_EQ(state(), unlocked) << "a wrong password doesn't lock";
    EXPECT_EQ(client.write(camera.port, commandRegister, lockCommand), GC_ERR_SUCCESS);
    EXPECT_EQ(state(), locked);
}

TEST_F(CameraTest, ANewPasswordIsTakenOnlyWhileUnlocked)
{
    EXPECT_EQ(client.write(camera.port, newPassword, "sesame\0\0"sv), GC_ERR_ACCESS_DENIED);
    EXPECT_EQ(client.lastError(), "a new password is taken only while the camera is unlocked");

    client.write(camera.port, unlockPassword, "hunter22");
    EXPECT_EQ(client.write(camera.port, newPassword, "sesame\0\0"sv), GC_ERR_SUCCESS);
    client.write(camera.port, commandRegister, lockCommand);
    client.write(camera.port, unlockPassword, "hunter22");
    EXPECT_EQ(state(), locked) << "the old password still opens";
    client.write(camera.port, unlockPassword, "sesame\0\0\0\0\0\0"sv);
    EXPECT_EQ(state(), unlocked) << "the number of filling zeros counts";
}

TEST_F(CameraTest, PasswordWritesOfAnotherShapeAreRefused)
{
    const struct
    {
        const char *name;
        std::uint64_t address;
        std::string bytes;
        GC_ERROR code;
    } rows[] = {
        {"4 bytes", unlockPassword, "hunt", GC_ERR_INVALID_VALUE},
        {"no multiple of 4", unlockPassword, "hunter22!", GC_ERR_INVALID_VALUE},
        {"longer than the register", newPassword, std::string(68, 'x'), GC_ERR_INVALID_ADDRESS},
        {"an empty password", newPassword, std::string(8, '\0'), GC_ERR_INVALID_VALUE},
        {"into the middle of the register", newPassword + 4, "hunter22", GC_ERR_ACCESS_DENIED},
        {"an unknown command", commandRegister, "\2\0\0\0"s, GC_ERR_INVALID_VALUE},
        {"a command of 8 bytes", commandRegister, "\1\0\0\0\0\0\0\0"s, GC_ERR_INVALID_VALUE},
        {"the lock state", lockState, "\0\0\0\0"s, GC_ERR_ACCESS_DENIED},
        {"no register", 0x50003000, "hunter22", GC_ERR_INVALID_ADDRESS},
        {"nothing", unlockPassword, "", GC_ERR_INVALID_PARAMETER},
    };
    client.write(camera.port, unlockPassword, "hunter22");
    for (const auto &row : rows)
        EXPECT_EQ(client.write(camera.port, row.address, row.bytes), row.code) << row.name;
    client.write(camera.port, commandRegister, lockCommand);
    client.write(camera.port, unlockPassword, "hunter22");
    EXPECT_EQ(state(), unlocked) << "a refused write has changed the password";
}

TEST_F(CameraTest, ReadsStayWithinReadableRegisters)
{
    EXPECT_EQ(client.read(camera.port, lockState + 2, 4), "00 00 01 00") << "across two registers";
    EXPECT_EQ(client.read(camera.port, passwordState, 8), "");
    EXPECT_EQ(client.code, GC_ERR_ACCESS_DENIED);
    EXPECT_EQ(client.lastError(), "the register at 0x50001008 can only be written");
    EXPECT_EQ(client.read(camera.port, ~std::uint64_t{0}, 8), "");
    EXPECT_EQ(client.code, GC_ERR_INVALID_ADDRESS);
    EXPECT_EQ(client.lastError(), "no register at 0xffffffffffffffff");
}

TEST_F(CameraTest, FactoryResetMakesItVanishAndComeBackLockedOnTheDefaultPassword)
{
    simulator.configure(cameraWith("password = \"hunter22\"\nreboot_ms = 300"));
    client.close();
    camera = OpenCamera(client);
    client.write(camera.port, unlockPassword, "hunter22");
    EXPECT_EQ(client.write(camera.port, commandRegister, resetCommand), GC_ERR_SUCCESS);

    EXPECT_EQ(state(), "");
    EXPECT_EQ(client.code, GC_ERR_IO);
    EXPECT_EQ(client.lastError(), "camera \"sim-1\": reboots");
    EXPECT_THAT(client.devices(camera.interface), IsEmpty());

    while (client.devices(camera.interface).empty())
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(state(), "") << "the handle from before the reset lives again";
    client.call<PDevClose>("DevClose")(camera.device);
    camera.port = client.port(client.openDevice(camera.interface));
    EXPECT_EQ(state(), lockedOnDefault);
    client.write(camera.port, unlockPassword, "mapleoak");
    EXPECT_EQ(client.read(camera.port, lockState, 4), "00 00 00 00");
}

TEST_F(CameraTest, ACameraWithoutLockHasNoPasswordRegisters)
{
    simulator.configure(cameraWith("lock = \"none\""));
    client.close();
    camera = OpenCamera(client);
    EXPECT_EQ(state(), "");
    EXPECT_EQ(client.code, GC_ERR_INVALID_ADDRESS);
    EXPECT_EQ(client.write(camera.port, unlockPassword, "hunter22"), GC_ERR_INVALID_ADDRESS);
}

TEST_F(CameraTest, FeatureRegistersHoldTheConfiguredValues)
{
    EXPECT_EQ(client.read(camera.port, 0x0008, 8), "00 00 00 11 22 33 44 01") << "MAC address";
    EXPECT_EQ(client.read(camera.port, 0x0024, 4), "c0 a8 00 0b") << "IP address";
    EXPECT_STREQ(client.readBytes(camera.port, 0x0068, 32).c_str(), "SimCam G5");
    EXPECT_STREQ(client.readBytes(camera.port, 0x0088, 32).c_str(), "1.2.3");
    EXPECT_STREQ(client.readBytes(camera.port, 0x00d8, 16).c_str(), "G5-0001");

    EXPECT_EQ(client.write(camera.port, 0x60000000, "\0\0\0\1"sv), GC_ERR_SUCCESS);
    EXPECT_EQ(client.read(camera.port, 0x60000000, 4), "00 00 00 01") << "ReverseX";
    EXPECT_EQ(client.write(camera.port, 0x60000004, "\0\0\0\1"sv), GC_ERR_SUCCESS);
    EXPECT_EQ(client.read(camera.port, 0x60000004, 4), "00 00 00 00") << "the latch command clears itself";
    EXPECT_NE(client.read(camera.port, 0x60000008, 8), "00 00 00 00 00 00 00 00") << "TimestampLatchValue";
}

/// The description as a consumer finds it: by the queries of the port's first URL.
class DescriptionTest : public testing::Test
{
protected:
    std::string info(URL_INFO_CMD command)
    {
        return client.query<PGCGetPortURLInfo>("GCGetPortURLInfo", camera->port, 0u, command);
    }

    /// The file, by one read of its whole length.
    std::string load(const std::string &keys)
    {
        simulator.configure(cameraWith(keys));
        camera = std::make_unique<OpenCamera>(client);
        EXPECT_EQ(info(URL_INFO_SCHEME), "\0\0\0\0"s) << "local";
        EXPECT_EQ(info(URL_INFO_FILE_REGISTER_ADDRESS), "\0\0\0\xf0\0\0\0\0"s);
        std::uint64_t size = 0;
        info(URL_INFO_FILE_SIZE).copy(reinterpret_cast<char *>(&size), sizeof size);
        return client.readBytes(camera->port, 0xf0000000, size);
    }

    Simulator simulator;
    Client client{Simulator::cti()};
    std::unique_ptr<OpenCamera> camera;
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
    EXPECT_EQ(client.read(camera->port, 0xf0000000 + file.size() - 1, 2), "") << "a read beyond the file";
    EXPECT_EQ(client.code, GC_ERR_INVALID_ADDRESS);
}

TEST_F(DescriptionTest, OnlyAGevCameraHasNetworkFeatures)
{
    EXPECT_THAT(load("type = \"U3V\""), testing::Not(HasSubstr("Gev")));
    client.close();
    EXPECT_THAT(load(""), HasSubstr("<Integer Name=\"GevCurrentIPAddress\""));
}

TEST_F(DescriptionTest, AFileOfTheUserAndAnotherUrlReplaceTheBuiltInOnes)
{
    std::ofstream(simulator.folder() / "own.xml") << "<own/>";
    EXPECT_EQ(load("xml = \"own.xml\"\nurl = \"http://nowhere\"\nport_name = \"Other\""), "<own/>");
    EXPECT_STREQ(info(URL_INFO_URL).c_str(), "http://nowhere");
    EXPECT_STREQ(client.query<PGCGetPortInfo>("GCGetPortInfo", camera->port, PORT_INFO_PORTNAME).c_str(),
                 "Other");
}

TEST_F(DescriptionTest, AZippedOneIsAnArchiveWithTheXmlInIt)
{
    std::ofstream(simulator.folder() / "own.xml")
        << "123456789"; // its CRC-32 is the check value of the algorithm
    const std::string file = load("description = \"zipped\"\nxml = \"own.xml\"\nmodel = \"M\"");
    EXPECT_STREQ(info(URL_INFO_FILENAME).c_str(), "M.zip");
    ASSERT_EQ(file.size(), 30 + 5 + 9 + 46 + 5 + 22);
    EXPECT_EQ(file.substr(0, 4), "PK\3\4");
    EXPECT_EQ(file.substr(14, 4), "\x26\x39\xf4\xcb");
    EXPECT_EQ(file.substr(30, 14), "M.xml123456789");
    EXPECT_EQ(file.substr(44, 4), "PK\1\2");
    EXPECT_EQ(file.substr(file.size() - 22, 4), "PK\5\6");
}

} // namespace
