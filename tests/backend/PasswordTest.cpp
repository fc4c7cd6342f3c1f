// SPDX-License-Identifier: MIT
// The operations on the lock: the port traffic of each in its order, the bytes on the wire, and every word
// printed.
#include "BackEndFixture.h"
#include "PasswordRegisters.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char *prompt = "\nEnter password (use 'c' to cancel): ";
constexpr const char *locked = "read 0x50001000 01 00 00 00";
constexpr const char *unlocked = "read 0x50001000 00 00 00 00";
constexpr const char *lockCommand = "write 0x50001008 01 00 00 00";
constexpr const char *rightPassword = "write 0x50002040 68 75 6e 74 65 72 32 32"; // hunter22
constexpr const char *said = "text = \"no\"\n";

class PasswordTest : public BackEndTest
{
protected:
    std::string unlock(const std::string &given, bool forChange = false, std::string_view input = "")
    {
        return printedBy([&] { opened = backEnd->unlock(given, forChange); }, input);
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
        simulator.failNth("GCWritePort", -1010, 1, 0, "address = " + address + "\n" + said);
        pass();
        simulator.clearLog();
    }

    std::string opened;
    int result = 99;
};

TEST_F(PasswordTest, Lock)
{
    selectUnlocked();
    EXPECT_EQ(printedBy([this] { EXPECT_TRUE(backEnd->lock()); }), "Successfully locked!\n");
    EXPECT_THAT(simulator.portTraffic(), ElementsAre(lockCommand, locked));
}

TEST_F(PasswordTest, AFailedLock)
{
    selectUnlocked();
    failWrites("0x50001008");
    EXPECT_EQ(printedBy([this] { EXPECT_FALSE(backEnd->lock()); }),
              "PWD lock failed: GCWritePort failed with code -1010! Message: no \nError: Locking failed!\n");
}

TEST_F(PasswordTest, UnlockWithAPasswordGiven)
{
    select();
    EXPECT_EQ(unlock("hunter22"), "Successfully unlocked!\n");
    EXPECT_EQ(opened, "hunter22");
    EXPECT_THAT(simulator.portTraffic(), ElementsAre(locked, rightPassword, unlocked));
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22"));

    simulator.clearLog();
    EXPECT_EQ(unlock("hunter22"), "Device already unlocked!\n");
    EXPECT_EQ(opened, "");
    EXPECT_THAT(simulator.portTraffic(), ElementsAre(unlocked));
}

TEST_F(PasswordTest, AWrongPasswordGivenIsTriedOnce)
{
    select();
    EXPECT_EQ(unlock("wrong"), "Error: Unlocking failed! Wrong password?\n");
    EXPECT_EQ(opened, "");
    EXPECT_THAT(simulator.portTraffic(),
                ElementsAre(locked, "write 0x50002040 77 72 6f 6e 67 00 00 00", locked));
    EXPECT_THAT(backEnd->selectedPasswordHistory(), IsEmpty());
}

TEST_F(PasswordTest, UnlockAsksUpToThreeTimes)
{
    select();
    const std::string wrong = std::string(prompt) + "Error: Unlocking failed! Wrong password?\n";
    EXPECT_EQ(unlock("", false, "wrong\nhunter22\n"), wrong + prompt + "Successfully unlocked!\n");
    EXPECT_EQ(opened, "hunter22");
    EXPECT_THAT(simulator.portTraffic(), ElementsAre(locked, "write 0x50002040 77 72 6f 6e 67 00 00 00",
                                                     locked, rightPassword, unlocked));

    backEnd->lock();
    simulator.clearLog();
    EXPECT_EQ(unlock("", false, "one\ntwo\nthree\nhunter22\n"),
              wrong + wrong + wrong + "Error: Maximum number of retries reached.\n");
    EXPECT_EQ(opened, "");
    EXPECT_EQ(simulator.calls("GCWritePort").size(), 3u);
}

TEST_F(PasswordTest, UnlockCancelled)
{
    select();
    const std::string canceled = "Unlock device canceled by user...\n";
    EXPECT_EQ(unlock("", false, "c\n"), prompt + std::string("Action canceled...\n") + canceled);
    EXPECT_EQ(unlock("", false, "q\n"), prompt + std::string("Action canceled...\n") + canceled);
    EXPECT_EQ(unlock("", false, "\n"), prompt + canceled) << "an empty line";
    EXPECT_EQ(unlock("", false, ""), prompt + canceled) << "the end of the input";
    EXPECT_THAT(simulator.calls("GCWritePort"), IsEmpty());
    EXPECT_EQ(unlock("", false, "wrong\nc\n"), std::string(prompt) +
                                                   "Error: Unlocking failed! Wrong password?\n" + prompt +
                                                   "Action canceled...\n" + canceled);
}

TEST_F(PasswordTest, ChangeOnALockedDevice)
{
    select();
    EXPECT_EQ(change("hunter22", "sunny77"),
              "Changing the password ...\nSuccessfully unlocked!\nSuccessfully changed the password!\n");
    EXPECT_EQ(result, 0);
    EXPECT_THAT(simulator.portTraffic(), ElementsAre(locked, rightPassword, unlocked, unlocked, unlocked,
                                                     "write 0x50002000 73 75 6e 6e 79 37 37 00", lockCommand,
                                                     "write 0x50002040 73 75 6e 6e 79 37 37 00", unlocked));
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22", "sunny77"));
}

TEST_F(PasswordTest, ChangeOnAnOpenLockProvesTheOldPassword)
{
    selectUnlocked();
    EXPECT_EQ(change("hunter22", "sunny77"),
              "Changing the password ...\nSuccessfully unlocked!\nSuccessfully changed the password!\n");
    EXPECT_THAT(simulator.portTraffic(),
                ElementsAre(unlocked, lockCommand, rightPassword, unlocked, unlocked, unlocked,
                            "write 0x50002000 73 75 6e 6e 79 37 37 00", lockCommand,
                            "write 0x50002040 73 75 6e 6e 79 37 37 00", unlocked));

    EXPECT_EQ(change("wrong", "other"),
              "Changing the password ...\nError: Unlocking failed! Wrong password?\n"
              "Error when changing password: Camera might be locked.\n");
    EXPECT_EQ(result, 1);
    EXPECT_TRUE(device()->isLocked()) << "whatever it was before";
}

// Nothing is compared with an old password that is asked for, and a retry neither locks nor reads more.
TEST_F(PasswordTest, ChangeWithOnlyTheNewPasswordGiven)
{
    select();
    change("", "hunter22", "wrong\nhunter22\n");
    EXPECT_EQ(result, 0);
    EXPECT_THAT(simulator.portTraffic(),
                ElementsAre(locked, "write 0x50002040 77 72 6f 6e 67 00 00 00", locked, rightPassword,
                            unlocked, unlocked, unlocked, "write 0x50002000 68 75 6e 74 65 72 32 32",
                            lockCommand, rightPassword, unlocked));
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22"));
}

TEST_F(PasswordTest, ChangeToTheSame)
{
    select();
    EXPECT_EQ(change("hunter22", "hunter22"),
              "Changing the password ...\nError: passwords must be different!\n");
    EXPECT_EQ(result, -1);
    EXPECT_THAT(simulator.calls(), IsEmpty());
}

TEST_F(PasswordTest, ChangeAsksForEverything)
{
    select();
    const std::string start =
        std::string("Changing the password ...\n") + prompt + "Successfully unlocked!\n";
    EXPECT_EQ(change("", "", "hunter22\nab\nmapleoak\nhunter22\nsunny77\nc\n\nsunny78\nsunny77\n"),
              start + "Enter a new password ...\n" + prompt +
                  "Your password is to short. (min 3 characters)\n" + prompt +
                  "Cannot use default 'mapleoak' as new password.\n" + prompt +
                  "Your password has been used before.\n" + prompt + "Confirm new password ...\n" + prompt +
                  "Action canceled...\nConfirm new password ...\n" + prompt + "Confirm new password ...\n" +
                  prompt + "Confirm new password ...\n" + prompt + "Successfully changed the password!\n");
    EXPECT_EQ(result, 0);
}

TEST_F(PasswordTest, ChangeCancelledAtTheNewPassword)
{
    select();
    const std::string start = std::string("Changing the password ...\n") + prompt +
                              "Successfully unlocked!\n" + "Enter a new password ...\n" + prompt;
    const std::string canceled = "Entering new password canceled by user...\n";
    EXPECT_EQ(change("", "", "hunter22\nc\n"), start + "Action canceled...\n" + canceled);
    EXPECT_EQ(result, -1);
    EXPECT_FALSE(device()->isLocked()) << "it stays unlocked";
    result = 99;
    EXPECT_EQ(change("", "", "hunter22\n"), start + canceled) << "the end of the input at the new password";
    EXPECT_EQ(result, -1);
    result = 99;
    EXPECT_EQ(change("", "", "hunter22\nsunny77\n"), start + "Confirm new password ...\n" + prompt + canceled)
        << "and at its confirmation";
    EXPECT_EQ(result, -1);
    EXPECT_THAT(simulator.portTraffic(), testing::Not(testing::Contains(testing::HasSubstr("0x50002000"))));
}

TEST_F(PasswordTest, ChangeCancelledAtTheOldPassword)
{
    selectUnlocked();
    EXPECT_EQ(change("", "sunny77", "c\n"), std::string("Changing the password ...\n") + prompt +
                                                "Action canceled...\nUnlock device canceled by user...\n"
                                                "Error when changing password: Camera might be locked.\n");
    EXPECT_EQ(result, 1);
    EXPECT_FALSE(device()->isLocked()) << "unchanged at the first prompt";
    change("", "sunny77", "wrong\nc\n");
    EXPECT_EQ(result, 1);
    EXPECT_TRUE(device()->isLocked()) << "locked at a later one";
}

TEST_F(PasswordTest, ANewPasswordThatTheCameraRefuses)
{
    select();
    failWrites("0x50002000");
    EXPECT_EQ(change("hunter22", "sunny77"),
              "Changing the password ...\nSuccessfully unlocked!\n"
              "PWD set failed: GCWritePort failed with code -1010! Message: no \n"
              "Error: Could not set new password!\n");
    EXPECT_EQ(result, 2);
    EXPECT_TRUE(device()->isLocked());
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("hunter22"));
}

TEST_F(PasswordTest, AFailedUnlockWriteSaysNothingOfItsOwn)
{
    select();
    failWrites("0x50002040");
    EXPECT_EQ(unlock("hunter22"), "Error: Unlocking failed! Wrong password?\n");
}

// The accepted behaviour: a failed read of the lock state reads as an open lock.
TEST_F(PasswordTest, ALostCameraReadsAsUnlocked)
{
    select();
    simulator.failNth("GCReadPort", -1010, 2, 0, "address = 0x50001000\n");
    simulator.failNth("GCReadPort", -1010, 1, 0, "address = 0x50001004\n");
    pass();
    EXPECT_EQ(unlock("wrong"), "Successfully unlocked!\n");
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("wrong")) << "and recorded";
    EXPECT_EQ(printedBy([this] { EXPECT_FALSE(backEnd->selectedIsDefaultPassword()); }),
              "Password protection not available!\n");
}

TEST_F(PasswordTest, SetPasswordOnALockedDeviceWritesNothing)
{
    Device *camera = select();
    EXPECT_EQ(printedBy([&] { camera->setPassword("sunny77"); }),
              "Device is currently locked. Unlock it first to set a new password.\n");
    EXPECT_THAT(simulator.calls("GCWritePort"), IsEmpty());
}

TEST_F(PasswordTest, BytesOnTheWire)
{
    const struct
    {
        std::size_t length;
        std::size_t padded;
    } rows[] = {{0, 8}, {1, 8}, {3, 8}, {8, 8}, {9, 12}, {12, 12}, {13, 16}};
    for (const auto &row : rows)
        EXPECT_EQ(paddedPasswordSize(row.length), row.padded) << row.length;

    Device *camera = select();
    camera->unlock("a");
    camera->unlock("\xc3\xa4"
                   "2345678");
    EXPECT_THAT(simulator.portTraffic(), ElementsAre("write 0x50002040 61 00 00 00 00 00 00 00",
                                                     "write 0x50002040 c3 a4 32 33 34 35 36 37 38 00 00 00"));
}

TEST_F(PasswordTest, AClosedSelectedDeviceAnswersFromItsCache)
{
    Device *camera = select();
    camera->close(false);
    simulator.clearLog();
    EXPECT_TRUE(backEnd->selectedIsLocked());
    EXPECT_FALSE(backEnd->selectedIsDefaultPassword());
    EXPECT_THAT(simulator.calls(), IsEmpty());
}

TEST_F(PasswordTest, FactoryReset)
{
    Device *camera = select();
    EXPECT_EQ(printedBy([this] { backEnd->factoryResetSelected(); }), "");
    EXPECT_THAT(functionsOf(simulator.calls()), ElementsAre("GCWritePort", "DevClose"));
    EXPECT_THAT(simulator.portTraffic(), ElementsAre("write 0x50001008 80 00 00 00"));
    EXPECT_THAT(ids(), IsEmpty());
    EXPECT_FALSE(camera->isOpen());
    EXPECT_TRUE(camera->isLocked()) << "the flags keep their last values";
    EXPECT_TRUE(backEnd->selectedIsLocked()) << "nothing is selected";
    EXPECT_THAT(backEnd->selectedPasswordHistory(), IsEmpty());
}

TEST_F(PasswordTest, AFailedFactoryResetStaysOpenButLeavesTheList)
{
    Device *camera = select();
    failWrites("0x50001008");
    EXPECT_EQ(printedBy([this] { backEnd->factoryResetSelected(); }),
              "Factory reset failed: GCWritePort failed with code -1010! Message: no \n");
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

} // namespace
