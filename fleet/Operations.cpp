// SPDX-License-Identifier: MIT
#include "Operations.h"

#include "Device.h"
#include "LockProof.h"
#include "RegisterFailure.h"

#include <optional>
#include <utility>

namespace fleet {

namespace {

const char *const tryAgain = "Check cable and power of the camera, and try again.";

Reason reasonOf(const RegisterFailure &failure)
{
    return {failure.isWrite() ? ReasonCode::WriteFailed : ReasonCode::ReadFailed, failure.what(), tryAgain};
}

Outcome failed(Reason reason, std::optional<InForce> inForce = {})
{
    return {Result::Failed, inForce, std::move(reason), {}};
}

Outcome wrongPassword(std::optional<InForce> inForce = {})
{
    return failed({ReasonCode::WrongPassword, "The password does not open the lock.",
                   "Find the password of this camera; if it is lost, only a factory reset helps."},
                  inForce);
}

Outcome isUnlocked(std::optional<InForce> inForce = {})
{
    return {Result::NotProved,
            inForce,
            Reason{ReasonCode::Unlocked, "The camera is unlocked, which proves no password.",
                   "Lock it first, or --relock."},
            {}};
}

/// One change of a password. What is in force is known at each step, so that a failure at any of them tells it.
class Change
{
public:
    Change(Camera &camera, const Secret *old, const Secret &next, const ChangeRules &rules)
        : camera(camera), proof(camera), old(old), next(next), rules(rules)
    {}

    Outcome run()
    {
        try {
            return runSteps();
        } catch (const RegisterFailure &failure) {
            if (wasLocked && camera.lock != Lock::Locked)
                proof.tryToClose();
            return failed(reasonOf(failure), inForce);
        }
    }

private:
    Outcome runSteps()
    {
        const bool isLocked = camera.lock == Lock::Locked;
        wasLocked = rules.wasBefore == Lock::Unknown ? isLocked : rules.wasBefore == Lock::Locked;
        if (rules.tryNewFirst)
            inForce = InForce::Unknown;
        if (!isLocked) {
            if (!rules.relock && !rules.tryNewFirst)
                return isUnlocked(InForce::Old);
            proof.close();
        }
        if (rules.tryNewFirst && proof.opens(next))
            return finish({Result::Unchanged, InForce::New, {}, {}});
        if (!old)
            return failed(noSecretReason(), inForce);
        if (proof.opens(*old))
            return set();
        inForce = InForce::Unknown;
        if (!rules.tryNewFirst && proof.opens(next))
            return finish({Result::Unchanged, InForce::New, {}, {}});
        return wrongPassword(InForce::Unknown);
    }

    // The old one has opened the lock.
    Outcome set()
    {
        inForce = InForce::Unknown;
        const Password before = std::exchange(camera.password, Password::Unknown);
        std::optional<RegisterFailure> failure;
        try {
            camera.device->sendNewPassword(next.reveal());
        } catch (const RegisterFailure &write) {
            failure = write; // it may have arrived all the same
        }
        proof.close();
        if (proof.opens(next))
            return finish({Result::Done, InForce::New, {}, {}});
        const Reason reason =
            failure ? reasonOf(*failure)
                    : Reason{ReasonCode::WriteFailed, "The camera did not take the new password.",
                             "Give it another one, or reset it."};
        if (!proof.opens(*old))
            return failed(reason, InForce::Unknown);
        camera.password = before;
        return finish(failed(reason, InForce::Old));
    }

    // The lock is open.
    Outcome finish(Outcome outcome)
    {
        inForce = outcome.inForce.value_or(InForce::Unknown);
        if (inForce == InForce::New)
            camera.password = Password::User;
        if (wasLocked)
            proof.close();
        return outcome;
    }

    Camera &camera;
    LockProof proof;
    const Secret *old;
    const Secret &next;
    const ChangeRules rules;
    InForce inForce = InForce::Old;
    bool wasLocked = false; // nothing is to be put back before it is known
};

template <class Steps>
Outcome guarded(Steps steps)
{
    try {
        return steps();
    } catch (const RegisterFailure &failure) {
        return failed(reasonOf(failure));
    }
}

Outcome proveLocked(LockProof &proof, const Secret &current)
{
    try {
        if (!proof.opens(current))
            return wrongPassword();
        proof.close();
        return {Result::Done, {}, {}, {}};
    } catch (const RegisterFailure &) {
        proof.tryToClose(); // it may be open
        throw;
    }
}

} // namespace

Reason noSecretReason()
{
    return {ReasonCode::NoSecret, "There is no password for this camera.",
            "Give it by --passwords, a command or a file."};
}

Outcome verify(Camera &camera, const Secret &current, bool relock)
{
    LockProof proof(camera);
    return guarded([&]() -> Outcome {
        if (camera.lock == Lock::Locked)
            return proveLocked(proof, current);
        if (!relock)
            return isUnlocked();
        proof.close();
        return proof.opens(current) ? Outcome{Result::Done, {}, {}, {}} : wrongPassword();
    });
}

Outcome unlock(Camera &camera, const Secret &current)
{
    LockProof proof(camera);
    return guarded([&]() -> Outcome {
        if (camera.lock != Lock::Locked)
            return {Result::Unchanged, {}, {}, {}};
        return proof.opens(current) ? Outcome{Result::Done, {}, {}, {}} : wrongPassword();
    });
}

Outcome lock(Camera &camera)
{
    LockProof proof(camera);
    return guarded([&]() -> Outcome {
        if (camera.lock == Lock::Locked)
            return {Result::Unchanged, {}, {}, {}};
        proof.close();
        return {Result::Done, {}, {}, {}};
    });
}

Outcome change(Camera &camera, const Secret *old, const Secret &next, const ChangeRules &rules)
{
    return Change(camera, old, next, rules).run();
}

} // namespace fleet
