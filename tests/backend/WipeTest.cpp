// SPDX-License-Identifier: MIT
// No block of memory that the back end gives back holds a password. All of this program's memory is freed here, where
// the blocks can be looked at; the passwords are too long for the inside of a text.
#include "Wipe.h"

#include "BackEndFixture.h"

#include <algorithm>
#include <atomic>
#include <new>

namespace {

constexpr std::string_view secret = "secret-"; // what each password below begins with
std::atomic<int> leftBehind = 0;

} // namespace

void *operator new(std::size_t size)
{
    void *block = std::calloc(1, std::max<std::size_t>(size, 1)); // no remains of earlier blocks
    if (!block)
        throw std::bad_alloc();
    return block;
}

static void giveBack(void *block) noexcept
{
    const std::string_view bytes(static_cast<const char *>(block), block ? testsystem::blockSize(block) : 0);
    if (bytes.find(secret) != std::string_view::npos)
        ++leftBehind;
    std::free(block);
}

void operator delete(void *block) noexcept
{
    giveBack(block);
}

void operator delete(void *block, std::size_t /*size*/) noexcept
{
    giveBack(block);
}

namespace {

class WipeTest : public BackEndTest
{
protected:
    // Writes fail, so that the producer makes no copies, and the lock reads as open or closed all the same.
    void startWithLock(const std::string &state)
    {
        testsystem::setVariable("TORVANE_SIM_LOG", std::nullopt);
        simulator.configure(camera("lock_state_value = " + state + "\n"));
        fail("GCWritePort", 1, 0);
    }

    // Blocks with a password that \p work gives back.
    static int leftBehindBy(const std::function<void()> &work, std::string_view input = "")
    {
        const FeedInput feed(input);
        const CaptureOutput capture;
        const int before = leftBehind;
        work();
        return leftBehind - before;
    }

    const std::string before = "secret-as-it-was-before";
    const std::string after = "secret-as-it-is-afterwards";
};

TEST_F(WipeTest, TheOperationsWipeWhatTheyWereGivenAndWhatTheyAskedFor)
{
    // A used one is refused, and so is a confirmation that differs.
    const std::string other = "secret-of-another-kind-and-a-good-deal-longer";
    const std::string lines = before + '\n' + after + '\n' + other + '\n' + after + '\n' + other + '\n';
    for (const char *state : {"0", "1"}) {
        startWithLock(state);
        start();
        backEnd->selectDevice(device());
        const auto unlock = [&] {
            std::string opened = backEnd->unlock(before, true);
            wipe(opened);
        };
        EXPECT_EQ(leftBehindBy(unlock), 0) << state;
        EXPECT_EQ(leftBehindBy([&] { backEnd->changePassword(before, after); }), 0) << state;
        EXPECT_EQ(leftBehindBy([&] { backEnd->changePassword({}, {}); }, lines), 0) << state;
    }
}

TEST_F(WipeTest, TheDialogueAndTheHistory)
{
    const auto dialogue = [&](const std::string &newPassword) {
        BackEnd own;
        own.setPresetPassword(before);
        own.setPresetNewPassword(newPassword);
        own.runConsole();
    };
    startWithLock("0");
    EXPECT_EQ(leftBehindBy([&] { dialogue(after); }), 0) << "a change";
    startWithLock("1");
    fail("GCReadPort", 7, 0, "address = 0x50001000\n"); // behind the write: the lock counts as open then
    EXPECT_EQ(leftBehindBy([&] { dialogue(""); }), 0) << "an unlock";

    start();
    const auto history = [&] {
        for (const char *used : {"secret-number-one", "secret-number-two", "secret-number-three",
                                 "secret-number-four", "secret-number-two"}) {
            std::string password = used;
            device()->rememberPassword(password);
            wipe(password);
        }
        backEnd.reset();
    };
    EXPECT_EQ(leftBehindBy(history), 0);
}

} // namespace
