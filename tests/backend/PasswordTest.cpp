// SPDX-License-Identifier: MIT
// The operations on the lock, told as stories: what each answers and prints, and the port traffic that it makes, in its
// order. Whole runs of the dialogue have the other texts.
#include "BackEndFixture.h"

#include <gmock/gmock.h>

#include <sstream>

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

namespace {

const std::string unlockFailed = "Error: Unlocking failed! Wrong password?\n";
const std::string changing = "Changing the password ...\n";
const std::string asked = "\nEnter password (use 'c' to cancel): ";
const std::string canceled = asked + "Action canceled...\n";
const std::string mightBeLocked = "Error when changing password: Camera might be locked.\n";
const std::string writeFailed = " failed: GCWritePort failed with code -1010! Message: no \n";

class PasswordTest : public BackEndTest
{
protected:
    /// Takes a step, "lock", "unlock PASSWORD", "change OLD NEW" (where "-" is for none given) or "reset", with \p input
    /// on standard input, and compares what it answers, what it prints and the traffic since the step before.
    void expect(const std::string &step, const std::string &answer, const std::string &printed,
                const std::string &traffic, const std::string &input = "")
    {
        std::istringstream words(step);
        std::string operation;
        std::string first;
        std::string second;
        words >> operation >> first >> second;
        const auto given = [](const std::string &word) { return word == "-" ? std::string() : word; };
        std::string answered;
        const std::string told = printedBy(
            [&] {
                if (operation == "lock")
                    answered = backEnd->lock() ? "true" : "false";
                else if (operation == "unlock")
                    answered = backEnd->unlock(given(first), false);
                else if (operation == "change")
                    answered = std::to_string(backEnd->changePassword(given(first), given(second)));
                else
                    backEnd->factoryResetSelected();
            },
            input);
        EXPECT_EQ(answered, answer) << step;
        EXPECT_EQ(told, printed) << step;
        EXPECT_EQ(simulator.lockTraffic(), traffic) << step;
        simulator.clearLog();
    }

    // From now on, which the pass makes the producer learn of.
    void failWrites(const std::string &address, std::uint64_t count = 0)
    {
        fail("GCWritePort", 1, count, "address = " + address + "\n");
        pass();
        simulator.clearLog();
    }
};

TEST_F(PasswordTest, LockAndUnlockAreProved)
{
    select();
    expect("unlock wrong", "", unlockFailed, "locked TRY:wrong locked");
    expect("unlock hunter22", "hunter22", "Successfully unlocked!\n", "locked TRY:hunter22 unlocked");
    expect("unlock hunter22", "", "Device already unlocked!\n", "unlocked");
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22"));
    failWrites("0x50001008", 1);
    expect("lock", "false", "PWD lock" + writeFailed + "Error: Locking failed!\n", "unlocked");
    expect("lock", "true", "Successfully locked!\n", "LOCK locked");
    failWrites("0x50002040");
    expect("unlock hunter22", "", unlockFailed, "locked locked"); // a failed write says nothing of its own
}

TEST_F(PasswordTest, AChangeProvesBothPasswords)
{
    const std::string changed = changing + "Successfully unlocked!\nSuccessfully changed the password!\n";
    select();
    expect("change hunter22 sunny77", "0", changed,
           "locked TRY:hunter22 unlocked unlocked unlocked SET:sunny77 LOCK TRY:sunny77 unlocked");
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22", "sunny77"));
    // An open lock proves nothing, and is locked first.
    expect("change sunny77 hunter22", "0", changed,
           "unlocked LOCK TRY:sunny77 unlocked unlocked unlocked SET:hunter22 LOCK TRY:hunter22 unlocked");
    expect("change wrong other", "1", changing + unlockFailed + mightBeLocked,
           "unlocked LOCK TRY:wrong locked locked");
    failWrites("0x50002000");
    expect("change hunter22 sunny77", "2",
           changing + "Successfully unlocked!\nPWD set" + writeFailed +
               "Error: Could not set new password!\n",
           "locked TRY:hunter22 unlocked unlocked unlocked LOCK TRY:sunny77 locked");
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("sunny77", "hunter22"));
}

TEST_F(PasswordTest, AChangeAsksForWhatIsNotGiven)
{
    const std::string cancelUnlock = "Unlock device canceled by user...\n" + mightBeLocked;
    select();
    expect("change hunter22 hunter22", "-1", changing + "Error: passwords must be different!\n", "");
    // Nothing is compared with an old password that is asked for, and a retry neither locks nor reads more.
    expect("change - hunter22", "0",
           changing + asked + unlockFailed + asked +
               "Successfully unlocked!\nSuccessfully changed the password!\n",
           "locked TRY:wrong locked TRY:hunter22 unlocked unlocked unlocked SET:hunter22 LOCK TRY:hunter22 "
           "unlocked",
           "wrong\nhunter22\n");
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22"));
    // It stays unlocked when cancelled at the new password, as it is at the first prompt, and locked at a later one.
    expect("change - -", "-1",
           changing + asked + "Successfully unlocked!\nEnter a new password ...\n" + canceled +
               "Entering new password canceled by user...\n",
           "unlocked LOCK TRY:hunter22 unlocked unlocked", "hunter22\nc\n");
    expect("change - sunny77", "1", changing + canceled + cancelUnlock, "unlocked", "c\n");
    expect("change - sunny77", "1", changing + asked + unlockFailed + canceled + cancelUnlock,
           "unlocked LOCK TRY:wrong locked locked", "wrong\nc\n");
}

// The accepted behaviour: a failed read of the lock state reads as an open lock.
TEST_F(PasswordTest, ALostCameraReadsAsUnlocked)
{
    select();
    fail("GCReadPort", 2, 0, "address = 0x50001000\n");
    fail("GCReadPort", 1, 0, "address = 0x50001004\n");
    pass();
    simulator.clearLog();
    expect("unlock wrong", "wrong", "Successfully unlocked!\n", "locked TRY:wrong");
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
    camera->unlock("123456789abc");
    EXPECT_THAT(simulator.portTraffic(), ElementsAre("write 0x50002040 61 00 00 00 00 00 00 00",
                                                     "write 0x50002040 c3 a4 32 33 34 35 36 37 38 00 00 00",
                                                     "write 0x50002040 31 32 33 34 35 36 37 38 39 61 62 63"));
}

TEST_F(PasswordTest, AFactoryReset)
{
    const std::string plugged = std::string(Simulator::oneCamera) + "reboot_ms = 0\n";
    simulator.configure(plugged);
    Device *camera = select();
    expect("reset", "", "", "RESET");
    EXPECT_THAT(ids(), IsEmpty());
    EXPECT_FALSE(camera->isOpen());
    EXPECT_TRUE(camera->isLocked()) << "the flags keep their last values";
    camera->rememberPassword("hunter22");
    EXPECT_THAT(backEnd->selectedPasswordHistory(), IsEmpty()) << "nothing is selected";
    pass();
    ASSERT_EQ(device(), camera) << "it answers again";
    EXPECT_TRUE(camera->isDefaultPassword()) << "and is probed anew";

    backEnd->selectDevice(camera);
    backEnd->factoryResetSelected();
    simulator.configure(interface("sim-eth0", {}));
    pass();
    simulator.configure(plugged);
    EXPECT_EQ(pass(), "");
    EXPECT_THAT(device()->passwordHistory(), IsEmpty()) << "one that was away comes back as a new one";
}

TEST_F(PasswordTest, AFailedFactoryResetStaysOpenButLeavesTheList)
{
    Device *camera = select();
    failWrites("0x50001008");
    expect("reset", "", "Factory reset" + writeFailed, "");
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

TEST_F(PasswordTest, NothingSelected)
{
    start();
    simulator.clearLog();
    expect("lock", "false", "", "");
    expect("unlock hunter22", "", "", "");
    expect("change hunter22 sunny77", "-1", "", "");
    expect("reset", "", "", "");
    EXPECT_TRUE(backEnd->selectedIsLocked());
    EXPECT_FALSE(backEnd->selectedIsDefaultPassword());
}

TEST_F(PasswordTest, ADeviceThatIsNotOpenOrHasNoLockIsNotOperated)
{
    const auto expectRefusals = [this](const std::string &line) {
        device()->rememberPassword("kept");
        simulator.clearLog();
        EXPECT_EQ(printedBy([this] {
                      EXPECT_FALSE(backEnd->lock());
                      EXPECT_EQ(backEnd->unlock("hunter22", false), "");
                      EXPECT_EQ(backEnd->changePassword("hunter22", "sunny77"), -1);
                      backEnd->factoryResetSelected();
                  }),
                  line + line + line + line);
        EXPECT_THAT(simulator.calls(), IsEmpty());
        EXPECT_THAT(ids(), ElementsAre("sim-1"));
        EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("kept")) << "it stays selected";
    };
    select();
    EXPECT_FALSE(backEnd->selectedIsClosed());
    device()->close(false);
    EXPECT_TRUE(backEnd->selectedIsClosed());
    expectRefusals("Error: The device is not open.\n");
    startWith(camera("lock = \"none\"\n"));
    backEnd->selectDevice(device());
    expectRefusals("Error: The device has no password lock.\n");
}

// Standard input, with a pass between the question and the answer.
class PassBeforeInput : public std::streambuf
{
public:
    PassBeforeInput(std::function<void()> pass, std::string text)
        : pass(std::move(pass)), text(std::move(text)), before(std::cin.rdbuf(this))
    {}
    PassBeforeInput(const PassBeforeInput &) = delete;
    PassBeforeInput &operator=(const PassBeforeInput &) = delete;
    ~PassBeforeInput() override { std::cin.rdbuf(before); }

private:
    int_type underflow() override
    {
        pass();
        setg(text.data(), text.data(), text.data() + text.size());
        return traits_type::to_int_type(text.front());
    }

    const std::function<void()> pass;
    std::string text;
    std::streambuf *const before;
};

TEST_F(PasswordTest, ADeviceThatVanishesProvesNothing)
{
    Device *lost = select();
    lost->rememberPassword("kept");
    simulator.configure(interface("sim-eth0", {}));
    CaptureOutput capture;
    const PassBeforeInput input([this] { backEnd->updateDevices(); }, "hunter22\nhunter22\nhunter22\n");
    EXPECT_EQ(backEnd->unlock("", false), "");
    EXPECT_THAT(capture.text(),
                EndsWith(unlockFailed + std::string("Error: Maximum number of retries reached.\n")));
    EXPECT_THAT(lost->passwordHistory(), ElementsAre("kept"));
}

} // namespace
