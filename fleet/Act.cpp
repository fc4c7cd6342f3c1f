// SPDX-License-Identifier: MIT
#include "Act.h"

#include "Collector.h"
#include "Device.h"
#include "Identity.h"
#include "Interruption.h"
#include "Journal.h"
#include "Look.h"
#include "Reset.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <thread>

namespace fleet {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto heldPatience = 5s;
constexpr auto heldInterval = 100ms;

Outcome failedUntouched(const Job &job, const Request &request, Reason reason)
{
    return {Result::Failed, inForceUntouched(job, request.action), std::move(reason), {}};
}

class Worker
{
public:
    Worker(const Request &request, Tree &tree, const ActHooks &hooks)
        : request(request), tree(tree), hooks(hooks)
    {}

    /// \return false for a held camera, which has no outcome then
    bool work(Job &job)
    {
        hooks.begins(job);
        const auto begin = Clock::now();
        std::optional<Outcome> outcome = attempt(job);
        if (!outcome)
            return false;
        outcome->duration = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin);
        finish(job, std::move(*outcome));
        return true;
    }

    void giveUp(Job &job, Reason reason) { finish(job, failedUntouched(job, request, std::move(reason))); }

private:
    void finish(Job &job, Outcome outcome)
    {
        job.outcome = std::move(outcome);
        tellOtherWay(job);
        hooks.finished(job);
    }

    /// The first entry of a camera stands for all, but another one may be within reach.
    void tellOtherWay(Job &job) const
    {
        constexpr std::array outOfReach{ReasonCode::Held, ReasonCode::ReadOnly, ReasonCode::Unreachable};
        auto &reason = job.outcome->reason;
        if (!reason || std::ranges::find(outOfReach, reason->code) == outOfReach.end())
            return;
        for (const Camera &other : tree.cameras()) {
            if (other.duplicateOf == job.camera->place && isSameCamera(other, *job.camera) &&
                accessOf(*other.device) == Access::Free)
                reason->next += " Or choose its other entry, if it is the same camera: --interface " +
                                other.place.interface + " --id " + other.place.id + '.';
        }
    }

    std::optional<Outcome> attempt(Job &job)
    {
        Camera &camera = *job.camera;
        const Collector lines;
        const bool wasLooked = camera.wasLooked;
        camera.access = accessOf(*camera.device);
        camera.reason.reset();
        if (camera.access == Access::Held)
            return std::nullopt;
        if (auto reason = accessReason(camera.access))
            return failedUntouched(job, request, std::move(*reason));
        const std::int32_t code = camera.device->openForControl();
        if (!camera.device->isOpen()) {
            Reason reason = openReason(code, lines.text());
            if (reason.code == ReasonCode::Held)
                return std::nullopt;
            return failedUntouched(job, request, std::move(reason));
        }
        Outcome outcome = operate(job);
        if (camera.device->isOpen())
            camera.device->close(true);
        if (request.action == Action::Reset && outcome.result == Result::Done && !request.noWait)
            outcome = awaitReturn(tree, camera, !wasLooked);
        return outcome;
    }

    /// Whether another camera bears this one's serial number. One that could not be asked before may show only now, by its
    /// MAC address, that it is not the camera that it was taken for.
    bool hasTwin(const Camera &camera) const
    {
        return !camera.serial.empty() && std::ranges::any_of(tree.cameras(), [&](const Camera &other) {
            return &other != &camera && other.serial == camera.serial && !isSameCamera(other, camera);
        });
    }

    /// The same of an entry that was passed over as this camera.
    bool stoodForAnother(const Camera &camera) const
    {
        const Place &first = camera.duplicateOf ? *camera.duplicateOf : camera.place;
        return std::ranges::any_of(tree.cameras(), [&](const Camera &other) {
            return &other != &camera && (other.place == first || other.duplicateOf == first) &&
                   !isSameCamera(other, camera);
        });
    }

    Outcome operate(Job &job)
    {
        Camera &camera = *job.camera;
        if (camera.wasLooked && camera.lock != Lock::Unknown)
            readLockAgain(camera);
        else
            readOpened(camera);
        const bool isTwin = hasTwin(camera);
        if ((job.goesBySerial && isTwin) || (job.standsForOthers && stoodForAnother(camera)))
            return failedUntouched(job, request,
                                   {ReasonCode::SharedSerial, "Another camera has the same serial number.",
                                    "Choose between them with --id; torvane list tells the identifiers."});
        if (camera.lock == Lock::None)
            return noLockOutcome(job.isNamed);
        if (camera.lock == Lock::Unknown)
            return failedUntouched(job, request, *camera.reason);
        if (auto reason = hooks.opened(job, isTwin))
            return failedUntouched(job, request, std::move(*reason));
        if (request.needsCurrent() && !job.current && !job.rules.tryNewFirst)
            return failedUntouched(job, request, noSecretReason());
        try {
            hooks.willWrite(job);
        } catch (const JournalError &error) {
            return failedUntouched(job, request, journalReason(error));
        }
        return carryOut(job);
    }

    Outcome carryOut(Job &job) const
    {
        Camera &camera = *job.camera;
        switch (request.action) {
        case Action::Verify:
            return verify(camera, *job.current, request.relock);
        case Action::Unlock:
            return unlock(camera, *job.current);
        case Action::Lock:
            return lock(camera);
        case Action::Change:
            return change(camera, job.current ? &*job.current : nullptr, *job.next, job.rules);
        case Action::Reset:
            return sendReset(camera);
        case Action::List:
            break;
        }
        return {};
    }

    const Request &request;
    Tree &tree;
    const ActHooks &hooks;
};

Reason notReached()
{
    return {ReasonCode::NotReached, "The run was interrupted before this camera.", "Run it again."};
}

} // namespace

void actOn(Jobs &jobs, const Request &request, Tree &tree, const ActHooks &hooks)
{
    Worker worker(request, tree, hooks);
    std::vector<Job *> held;
    for (Job &job : jobs) {
        if (job.outcome)
            continue;
        if (platform::isInterrupted())
            worker.giveUp(job, notReached());
        else if (!worker.work(job))
            held.push_back(&job);
    }
    for (const auto end = Clock::now() + heldPatience; !held.empty() && Clock::now() < end;) {
        if (platform::isInterrupted())
            break;
        std::this_thread::sleep_for(heldInterval);
        std::erase_if(held, [&](Job *job) { return !platform::isInterrupted() && worker.work(*job); });
    }
    for (Job *const job : held)
        worker.giveUp(*job, platform::isInterrupted() ? notReached() : *accessReason(Access::Held));
}

} // namespace fleet
