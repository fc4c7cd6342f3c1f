// SPDX-License-Identifier: MIT
// What a camera does with its password lock, seen through its registers.
#include "Client.h"
#include "Simulator.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

class CameraTest : public testing::Test
{
protected:
    std::string state() { return client.read(camera.port, lockState, 8); }

    static constexpr char locked[] = "01 00 00 00 01 00 00 00";
    static constexpr char unlocked[] = "00 00 00 00 01 00 00 00";

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
    EXPECT_EQ(client.write(camera.port, commandRegister, lockCommand), GC_ERR_SUCCESS);
    EXPECT_EQ(state(), locked);
    EXPECT_THAT(
        simulator.portTraffic(),
        ElementsAre("read 0x50001000 01 00 00 00 01 00 00 00", "write 0x50002040 68 75 6e 74 65 72 32 33",
                    "read 0x50001000 01 00 00 00 01 00 00 00", "write 0x50002040 68 75 6e 74 65 72 32 32",
                    "read 0x50001000 00 00 00 00 01 00 00 00", "write 0x50001008 01 00 00 00",
                    "read 0x50001000 01 00 00 00 01 00 00 00"));
}
