// SPDX-License-Identifier: MIT
// The operations on the lock: the port traffic of each in its order, the bytes on the wire, and what is printed
// where no whole run of the dialogue comes.
#include "BackEndFixture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

namespace {

constexpr const char *locked = "read 0x50001000 01 00 00 00";
constexpr const char *unlocked = "read 0x50001000 00 00 00 00";
constexpr const char *lockCommand = "write 0x50001008 01 00 00 00";
constexpr const char *rightPassword = "write 0x50002040 68 75 6e 74 65 72 32 32"; // hunter22
constexpr const char *wrongPassword = "write 0x50002040 77 72 6f 6e 67 00 00 00"; // wrong
constexpr const char *setSunny77 = "write 0x50002000 73 75 6e 6e 79 37 37 00";
constexpr const char *tryAsSunny77 = "write 0x50002040 73 75 6e 6e 79 37 37 00";
constexpr const char *unlockFailed = "Error: Unlocking failed! Wrong password?\n";

class PasswordTest : public BackEndTest
{
protected:
    std::string unlock(const std::string &given)
    {
        return printedBy([&] { opened = backEnd->unlock(given, false); });
    }

    std::string change(const std::string &before, const std::string &after, std::string_view input = "")
    {
        return printedBy([&] { result = backEnd->changePassword(before, after); }, input);
    }

    // A camera whose lock stands open, with its device selected.
    void selectUnlocked()
    {
        select();
        unlock("hunter22");
        simulator.clearLog();
    }

    // From the next port access on, which the pass makes the producer learn of.
    void failWrites(const std::string &address)
    {
        fail("GCWritePort", 1, 0, "address = " + address + "\n");
        pass();
        simulator.clearLog();
    }

    const std::string writeFailed = " failed: GCWritePort failed with code -1010! Message: no \n";
    std::string opened;
    int result = 99;
};

TEST_F(PasswordTest, ALockIsProved)
{
    selectUnlocked();
    EXPECT_EQ(printedBy([this] { EXPECT_TRUE(backEnd->lock()); }), "Successfully locked!\n");
    EXPECT_THAT(simulator.portTraffic(), ElementsAre(lockCommand, locked));

    unlock("hunter22");
    failWrites("0x50001008");
    EXPECT_EQ(printedBy([this] { EXPECT_FALSE(backEnd->lock()); }),
              "PWD lock" + writeFailed + "Error: Locking failed!\n");
}

TEST_F(PasswordTest, AnUnlockIsProved)
{
    select();
    EXPECT_EQ(unlock("wrong"), unlockFailed);
    EXPECT_EQ(opened, "");
    EXPECT_EQ(unlock("hunter22"), "Successfully unlocked!\n");
    EXPECT_EQ(opened, "hunter22");
    EXPECT_EQ(unlock("hunter22"), "Device already unlocked!\n");
    EXPECT_EQ(opened, "");
    EXPECT_THAT(simulator.portTraffic(),
                ElementsAre(locked, wrongPassword, locked, locked, rightPassword, unlocked, unlocked));
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22"));

    backEnd->lock();
    failWrites("0x50002040");
    EXPECT_EQ(unlock("hunter22"), unlockFailed) << "a failed write says nothing of its own";
}

TEST_F(PasswordTest, AChangeProvesBothPasswords)
{
    select();
    change("hunter22", "sunny77");
    EXPECT_EQ(result, 0);
    EXPECT_THAT(simulator.portTraffic(), ElementsAre(locked, rightPassword, unlocked, unlocked, unlocked,
                                                     setSunny77, lockCommand, tryAsSunny77, unlocked));
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22", "sunny77"));
    EXPECT_EQ(change("wrong", "other"), "Changing the password ...\n" + std::string(unlockFailed) +
                                            "Error when changing password: Camera might be locked.\n");
    EXPECT_EQ(result, 1);
    EXPECT_TRUE(device()->isLocked()) << "whatever it was before";
}

TEST_F(PasswordTest, AChangeOnAnOpenLockLocksItFirst)
{
    selectUnlocked();
    change("hunter22", "sunny77");
    EXPECT_THAT(simulator.portTraffic(),
                ElementsAre(unlocked, lockCommand, rightPassword, unlocked, unlocked, unlocked, setSunny77,
                            lockCommand, tryAsSunny77, unlocked));
}

// Nothing is compared with an old password that is asked for, and a retry neither locks nor reads more.
TEST_F(PasswordTest, AChangeWithOnlyTheNewPasswordGiven)
{
    select();
    change("", "hunter22", "wrong\nhunter22\n");
    EXPECT_EQ(result, 0);
    EXPECT_THAT(simulator.portTraffic(),
                ElementsAre(locked, wrongPassword, locked, rightPassword, unlocked, unlocked, unlocked,
                            "write 0x50002000 68 75 6e 74 65 72 32 32", lockCommand, rightPassword,
                            unlocked));
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22"));
}

TEST_F(PasswordTest, AChangeThatIsNotMade)
{
    select();
    change("hunter22", "hunter22");
    EXPECT_EQ(result, -1);
    EXPECT_THAT(simulator.calls(), IsEmpty());

    EXPECT_THAT(change("", "", "hunter22\nc\n"),
                EndsWith("Action canceled...\nEntering new password canceled by user...\n"));
    EXPECT_EQ(result, -1);
    EXPECT_FALSE(device()->isLocked()) << "it stays unlocked";

    simulator.clearLog();
    change("", "sunny77", "c\n");
    EXPECT_EQ(result, 1);
    EXPECT_THAT(simulator.calls("GCWritePort"), IsEmpty())
        << "nothing changes when cancelled at the first prompt";
    change("", "sunny77", "wrong\nc\n");
    EXPECT_EQ(result, 1);
    EXPECT_TRUE(device()->isLocked()) << "locked at a later one";

    failWrites("0x50002000");
    EXPECT_EQ(change("hunter22", "sunny77"), "Changing the password ...\nSuccessfully unlocked!\nPWD set" +
                                                 writeFailed + "Error: Could not set new password!\n");
    EXPECT_EQ(result, 2);
    EXPECT_TRUE(device()->isLocked());
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22"));
}

// The accepted behaviour: a failed read of the lock state reads as an open lock.
TEST_F(PasswordTest, ALostCameraReadsAsUnlocked)
{
    select();
    fail("GCReadPort", 2, 0, "address = 0x50001000\n");
    fail("GCReadPort", 1, 0, "address = 0x50001004\n");
    pass();
    EXPECT_EQ(unlock("wrong"), "Successfully unlocked!\n");
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

TEST_F(PasswordTest, AClosedSelectedDeviceAnswersFromItsCache)
{
    select()->close(false);
    simulator.clearLog();
    EXPECT_TRUE(backEnd->selectedIsLocked());
    EXPECT_FALSE(backEnd->selectedIsDefaultPassword());
    EXPECT_THAT(simulator.calls(), IsEmpty());
}

TEST_F(PasswordTest, AFactoryReset)
{
    simulator.configure(std::string(Simulator::oneCamera) + "reboot_ms = 0\n");
    Device *camera = select();
    EXPECT_EQ(printedBy([this] { backEnd->factoryResetSelected(); }), "");
    EXPECT_THAT(functionsOf(simulator.calls()), ElementsAre("GCWritePort", "DevClose"));
    EXPECT_THAT(simulator.portTraffic(), ElementsAre("write 0x50001008 80 00 00 00"));
    EXPECT_THAT(ids(), IsEmpty());
    EXPECT_FALSE(camera->isOpen());
    EXPECT_TRUE(camera->isLocked()) << "the flags keep their last values";
    camera->rememberPassword("hunter22");
    EXPECT_THAT(backEnd->selectedPasswordHistory(), IsEmpty()) << "nothing is selected";
    pass();
    EXPECT_EQ(device(), camera) << "it answers again";
    EXPECT_TRUE(camera->isDefaultPassword()) << "and is probed anew";
}

TEST_F(PasswordTest, AResetCameraThatWasAwayComesBackAsANewOne)
{
    const std::string plugged = std::string(Simulator::oneCamera) + "reboot_ms = 0\n";
    simulator.configure(plugged);
    select()->rememberPassword("hunter22");
    printedBy([this] { backEnd->factoryResetSelected(); });
    simulator.configure(interface("sim-eth0", {}));
    EXPECT_EQ(pass(), "");
    simulator.configure(plugged);
    EXPECT_EQ(pass(), "");
    EXPECT_THAT(device()->passwordHistory(), IsEmpty());
    EXPECT_TRUE(device()->isDefaultPassword());
}

TEST_F(PasswordTest, AFailedFactoryResetStaysOpenButLeavesTheList)
{
    Device *camera = select();
    failWrites("0x50001008");
    EXPECT_EQ(printedBy([this] { backEnd->factoryResetSelected(); }), "Factory reset" + writeFailed);
    EXPECT_TRUE(camera->isOpen());
    EXPECT_THAT(ids(), IsEmpty());
    backEnd->selectDevice(camera);
    camera->rememberPassword("hunter22");
    backEnd->factoryResetSelected();
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22"))
        << "what is not in the list stays selected";
    pass();
    EXPECT_THAT(ids(), ElementsAre("sim-1")) << "still in the tree, it comes back as new";
    EXPECT_EQ(device(), camera);
}

TEST_F(PasswordTest, NothingSelected)
{
    start();
    simulator.clearLog();
    EXPECT_EQ(printedBy([this] {
                  EXPECT_FALSE(backEnd->lock());
                  EXPECT_EQ(backEnd->unlock("hunter22", false), "");
                  EXPECT_EQ(backEnd->changePassword("hunter22", "sunny77"), -1);
                  backEnd->factoryResetSelected();
              }),
              "");
    EXPECT_TRUE(backEnd->selectedIsLocked());
    EXPECT_FALSE(backEnd->selectedIsDefaultPassword());
    EXPECT_THAT(simulator.calls(), IsEmpty());
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
