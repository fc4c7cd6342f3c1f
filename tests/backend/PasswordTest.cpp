// SPDX-License-Identifier: MIT
// The operations on the lock, told as stories: what each answers, and the port traffic that it makes, in its order.
// Whole runs of the dialogue have the texts, but for those below.
#include "BackEndFixture.h"

#include <gmock/gmock.h>

#include <iostream>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::string writeFailed = " failed: GCWritePort failed with code -1010! Message: no \n";

class PasswordTest : public BackEndTest
{
protected:
    /// What a step answers, and the traffic since the step before. What it prints is in `printed`.
    std::string outcomeOf(const std::function<std::string()> &step, std::string_view input = "")
    {
        std::string answer;
        printed = printedBy([&] { answer = step(); }, input);
        const std::string traffic = simulator.lockTraffic();
        simulator.clearLog();
        return answer + ": " + traffic;
    }

    std::string lock()
    {
        return outcomeOf([this] { return backEnd->lock() ? "true" : "false"; });
    }

    std::string unlock(const std::string &password)
    {
        return outcomeOf([&] { return backEnd->unlock(password, false); });
    }

    std::string change(const std::string &before, const std::string &after, std::string_view input = "")
    {
        return outcomeOf([&] { return std::to_string(backEnd->changePassword(before, after)); }, input);
    }

    std::string reset()
    {
        return outcomeOf([this] { return backEnd->factoryResetSelected(), "done"; });
    }

    // From now on, which the pass makes the producer learn of.
    void failWrites(const std::string &address, std::uint64_t count = 0)
    {
        fail("GCWritePort", 1, count, "address = " + address + "\n");
        pass();
        simulator.clearLog();
    }

    std::string printed;
};

TEST_F(PasswordTest, LockAndUnlockAreProved)
{
    select();
    EXPECT_EQ(unlock("wrong"), ": locked TRY:wrong locked");
    EXPECT_EQ(unlock("hunter22"), "hunter22: locked TRY:hunter22 unlocked");
    EXPECT_EQ(unlock("hunter22"), ": unlocked");
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22"));
    failWrites("0x50001008", 1);
    EXPECT_EQ(lock(), "false: unlocked");
    EXPECT_EQ(printed, "PWD lock" + writeFailed + "Error: Locking failed!\n");
    EXPECT_EQ(lock(), "true: LOCK locked");
    failWrites("0x50002040");
    EXPECT_EQ(unlock("hunter22"), ": locked locked");
    EXPECT_EQ(printed, "Error: Unlocking failed! Wrong password?\n") << "the write says nothing of its own";
}

TEST_F(PasswordTest, AChangeProvesBothPasswords)
{
    select();
    EXPECT_EQ(change("hunter22", "sunny77"),
              "0: locked TRY:hunter22 unlocked unlocked unlocked SET:sunny77 LOCK TRY:sunny77 unlocked");
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22", "sunny77"));
    // An open lock proves nothing, and is locked first.
    EXPECT_EQ(change("wrong", "other"), "1: unlocked LOCK TRY:wrong locked locked");
    failWrites("0x50002000");
    EXPECT_EQ(change("sunny77", "hunter22"),
              "2: locked TRY:sunny77 unlocked unlocked unlocked LOCK TRY:hunter22 locked");
    EXPECT_EQ(printed, "Changing the password ...\nSuccessfully unlocked!\nPWD set" + writeFailed +
                           "Error: Could not set new password!\n");
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22", "sunny77"));
}

TEST_F(PasswordTest, AChangeAsksForWhatIsNotGiven)
{
    select();
    EXPECT_EQ(change("hunter22", "hunter22"), "-1: ");
    // Nothing is compared with an old password that is asked for, and a retry neither locks nor reads more.
    EXPECT_EQ(change("", "hunter22", "wrong\nhunter22\n"),
              "0: locked TRY:wrong locked TRY:hunter22 unlocked unlocked unlocked SET:hunter22 LOCK "
              "TRY:hunter22 unlocked");
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22"));
    // It stays unlocked when cancelled at the new password, as it is at the first prompt, and locked at a later one.
    EXPECT_EQ(change("", "", "hunter22\nc\n"), "-1: unlocked LOCK TRY:hunter22 unlocked unlocked");
    EXPECT_EQ(change("", "sunny77", "c\n"), "1: unlocked");
    EXPECT_EQ(change("", "sunny77", "wrong\nc\n"), "1: unlocked LOCK TRY:wrong locked locked");
}

// The accepted behaviour: a failed read of the lock state reads as an open lock.
TEST_F(PasswordTest, ALostCameraReadsAsUnlocked)
{
    select();
    fail("GCReadPort", 2, 0, "address = 0x50001000\n");
    fail("GCReadPort", 1, 0, "address = 0x50001004\n");
    pass();
    simulator.clearLog();
    EXPECT_EQ(unlock("wrong"), "wrong: locked TRY:wrong");
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("wrong")) << "and recorded";
    EXPECT_EQ(printedBy([this] { EXPECT_FALSE(backEnd->selectedIsDefaultPassword()); }),
              "Password protection not available!\n");
}

TEST_F(PasswordTest, BytesOnTheWire)
{
    Device *camera = select();
    camera->unlock("a");
    camera->unlock("\xc3\xa4"
                   "2345678");
    EXPECT_THAT(simulator.portTraffic(), ElementsAre("write 0x50002040 61 00 00 00 00 00 00 00",
                                                     "write 0x50002040 c3 a4 32 33 34 35 36 37 38 00 00 00"));
}

TEST_F(PasswordTest, AFactoryReset)
{
    simulator.configure(std::string(Simulator::oneCamera) + "reboot_ms = 0\n");
    Device *camera = select();
    EXPECT_EQ(reset(), "done: RESET");
    EXPECT_THAT(ids(), IsEmpty());
    EXPECT_FALSE(camera->isOpen());
    EXPECT_TRUE(camera->isLocked()) << "the flags keep their last values";
    camera->rememberPassword("hunter22");
    EXPECT_THAT(backEnd->selectedPasswordHistory(), IsEmpty()) << "nothing is selected";
    pass();
    ASSERT_EQ(device(), camera) << "it answers again";
    EXPECT_TRUE(camera->isDefaultPassword()) << "and is probed anew";
}

TEST_F(PasswordTest, AFailedFactoryResetStaysOpenButLeavesTheList)
{
    Device *camera = select();
    failWrites("0x50001008");
    EXPECT_EQ(reset(), "done: ");
    EXPECT_EQ(printed, "Factory reset" + writeFailed);
    EXPECT_TRUE(camera->isOpen());
    EXPECT_THAT(ids(), IsEmpty());
    backEnd->selectDevice(camera);
    camera->rememberPassword("hunter22");
    backEnd->factoryResetSelected();
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22"))
        << "what is not in the list stays selected";
    pass();
    EXPECT_EQ(device(), camera) << "still in the tree, it comes back as new";
}

TEST_F(PasswordTest, WithoutAnOpenLockNothingIsOperated)
{
    const auto expectRefusals = [this](const std::string &line) {
        simulator.clearLog();
        EXPECT_EQ(lock() + printed, "false: " + line);
        EXPECT_EQ(unlock("hunter22") + printed, ": " + line);
        EXPECT_EQ(change("hunter22", "sunny77") + printed, "-1: " + line);
        EXPECT_EQ(reset() + printed, "done: " + line);
        EXPECT_THAT(ids(), ElementsAre("sim-1"));
    };
    start();
    expectRefusals(""); // nothing is selected
    EXPECT_TRUE(backEnd->selectedIsLocked());
    EXPECT_FALSE(backEnd->selectedIsDefaultPassword());
    backEnd->selectDevice(device());
    EXPECT_FALSE(backEnd->selectedIsClosed());
    device()->rememberPassword("kept");
    device()->close(false);
    EXPECT_TRUE(backEnd->selectedIsClosed());
    expectRefusals("Error: The device is not open.\n");
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("kept")) << "it stays selected";
    startWith(camera("lock = \"none\"\n"));
    backEnd->selectDevice(device());
    expectRefusals("Error: The device has no password lock.\n");
}

// Standard input, with a pass between the question and the answers.
struct PassBeforeInput : std::streambuf
{
    explicit PassBeforeInput(BackEnd &backEnd) : backEnd(backEnd) {}

    int_type underflow() override
    {
        backEnd.updateDevices();
        setg(text.data(), text.data(), text.data() + text.size());
        return traits_type::to_int_type(text.front());
    }

    BackEnd &backEnd;
    std::string text = "hunter22\nhunter22\nhunter22\n";
};

TEST_F(PasswordTest, ADeviceThatVanishesProvesNothing)
{
    Device *lost = select();
    lost->rememberPassword("kept");
    simulator.configure(interface("sim-eth0", {}));
    PassBeforeInput input(*backEnd);
    std::streambuf *const before = std::cin.rdbuf(&input);
    CaptureOutput capture;
    EXPECT_EQ(backEnd->unlock("", false), "");
    std::cin.rdbuf(before);
    EXPECT_THAT(lost->passwordHistory(), ElementsAre("kept"));
}

} // namespace
