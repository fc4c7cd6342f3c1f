// SPDX-License-Identifier: MIT
// The rules for a new password, and the memory of used ones that the last of them looks at.
#include "BackEndFixture.h"

#include <gmock/gmock.h>

#include <tuple>

using testing::ElementsAre;

namespace {

using RulesTest = BackEndTest;

// The words of each stand in whole runs of the dialogue too.
TEST_F(RulesTest, EachRuleInItsOrder)
{
    select()->rememberPassword("usedbefore");
    const std::tuple<std::string, PasswordCheck, std::string> rows[] = {
        {"\xc3\xa4", PasswordCheck::PasswordTooShort, "Your password is to short. (min 3 characters)"},
        {"abc", PasswordCheck::PasswordOk, "untouched"},
        {"mapleoak", PasswordCheck::PasswordIsDefault, "Cannot use default 'mapleoak' as new password."},
        {"usedbefore", PasswordCheck::PasswordUsedBefore, "Your password has been used before."},
        {"UsedBefore", PasswordCheck::PasswordOk, "untouched"},
    };
    for (const auto &[candidate, expected, words] : rows) {
        PasswordCheck code{};
        std::string message = "untouched";
        const bool passed = expected == PasswordCheck::PasswordOk;
        EXPECT_EQ(backEnd->checkNewPassword(candidate, code, &message), passed) << candidate;
        EXPECT_EQ(code, expected) << candidate;
        EXPECT_EQ(message, words) << candidate;
    }
}

TEST_F(RulesTest, TheLastThreeDifferentPasswordsAreRemembered)
{
    Device *camera = select();
    for (const char *used : {"A", "B", "C", "D"})
        camera->rememberPassword(used);
    EXPECT_THAT(camera->passwordHistory(), ElementsAre("B", "C", "D"));
    camera->rememberPassword("B");
    EXPECT_THAT(backEnd->selectedPasswordHistory(), ElementsAre("C", "D", "B")) << "moved, none lost";
    camera->close(false);
    EXPECT_THAT(camera->passwordHistory(), ElementsAre("C", "D", "B")) << "survives a close";
}

// 2 GiB and a byte: more than any device takes.
TEST_F(RulesTest, TooLongAPassword)
{
    std::string longest(0x80000000u, 'x');
    Device *camera = select();
    PasswordCheck code{};
    std::string message;
    EXPECT_FALSE(backEnd->checkNewPassword(longest, code, &message));
    EXPECT_EQ(code, PasswordCheck::PasswordTooLong);
    EXPECT_EQ(message, "Your password is too long. (max 2147483647 characters)");
    EXPECT_EQ(printedBy([&] { camera->setPassword(longest); }),
              "Device is currently locked. Unlock it first to set a new password.\n")
        << "the lock is looked at first";
    backEnd->unlock("hunter22", false);
    simulator.clearLog();
    EXPECT_EQ(printedBy([&] { camera->setPassword(longest); }), "Your password is too long.\n");
    EXPECT_EQ(printedBy([&] { camera->unlock(longest); }), "") << "dropped without a word";
    EXPECT_TRUE(simulator.calls("GCWritePort").empty());

    longest.pop_back();
    EXPECT_TRUE(backEnd->checkNewPassword(longest, code, nullptr)) << "the longest that is allowed";
}

} // namespace
