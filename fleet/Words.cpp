// SPDX-License-Identifier: MIT
// The words by which scripts know states and results. They never change. Each table is in the order of its enumeration.
#include "Camera.h"
#include "Outcome.h"

#include <array>

namespace fleet {

namespace {

constexpr std::array accessWords{"free", "held", "read_only", "unreachable", "unknown"};
constexpr std::array lockWords{"locked", "unlocked", "none", "unknown"};
constexpr std::array passwordWords{"factory", "user", "none", "unknown"};
constexpr std::array reasonWords{"held",           "read_only", "no_lock",       "unreachable",
                                 "wrong_password", "unlocked",  "write_failed",  "read_failed",
                                 "vanished",       "no_secret", "shared_serial", "rule",
                                 "journal",        "vault",     "not_reached",   "producer"};
constexpr std::array actionWords{"list", "verify", "unlock", "lock", "change", "reset"};
constexpr std::array resultWords{"done", "unchanged", "failed", "refused", "skipped", "not_proved", "would"};
constexpr std::array inForceWords{"old", "new", "unknown"};

template <class Words, class Value>
const char *wordIn(const Words &words, Value value)
{
    return words.at(static_cast<std::size_t>(value));
}

static_assert(accessWords.size() == static_cast<std::size_t>(Access::Unknown) + 1);
static_assert(lockWords.size() == static_cast<std::size_t>(Lock::Unknown) + 1);
static_assert(passwordWords.size() == static_cast<std::size_t>(Password::Unknown) + 1);
static_assert(reasonWords.size() == static_cast<std::size_t>(ReasonCode::Producer) + 1);
static_assert(actionWords.size() == static_cast<std::size_t>(Action::Reset) + 1);
static_assert(resultWords.size() == static_cast<std::size_t>(Result::Would) + 1);
static_assert(inForceWords.size() == static_cast<std::size_t>(InForce::Unknown) + 1);

} // namespace

const char *wordOf(Access access)
{
    return wordIn(accessWords, access);
}

const char *wordOf(Lock lock)
{
    return wordIn(lockWords, lock);
}

const char *wordOf(Password password)
{
    return wordIn(passwordWords, password);
}

const char *wordOf(ReasonCode code)
{
    return wordIn(reasonWords, code);
}

const char *wordOf(Action action)
{
    return wordIn(actionWords, action);
}

const char *wordOf(Result result)
{
    return wordIn(resultWords, result);
}

const char *wordOf(InForce inForce)
{
    return wordIn(inForceWords, inForce);
}

} // namespace fleet
