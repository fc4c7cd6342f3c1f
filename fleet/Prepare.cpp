// SPDX-License-Identifier: MIT
#include "Prepare.h"

#include "Command.h"
#include "Identity.h"
#include "Interrupted.h"
#include "Look.h"
#include "PasswordRules.h"

#include <algorithm>
#include <map>

namespace fleet {

namespace {

Outcome refused(const Job &job, const Request &request, Reason reason)
{
    return {Result::Refused, inForceUntouched(job, request.action), std::move(reason), {}};
}

std::optional<Reason> refusalOfBegun(const Request &request, const Journal &journal, const Camera &camera)
{
    if (request.resume || !journal.hasUnsettledIntent(camera))
        return std::nullopt;
    return Reason{ReasonCode::Journal, "A change of this camera was begun and has no outcome.",
                  "Run change --resume first."};
}

/// The factory's own is known, and is sent to cameras that say they are on it, and to no other.
bool takeFactorys(Job &job, const Secrets &secrets)
{
    job.isFactorys =
        job.camera->password == Password::Factory && !secrets.hasLine(*job.camera, Secrets::Kind::Current);
    if (job.isFactorys)
        job.current = Secret(std::string(factoryPassword));
    return job.isFactorys;
}

/// One that hid its MAC address before may be another camera than the one whose change was begun.
bool isBegunOne(const CameraKey &begun, const Camera &camera)
{
    return CameraKey(camera).isSame(begun) && (begun.mac.isEmpty() || camera.mac);
}

class Preparation
{
public:
    Preparation(const Request &request, Secrets &secrets, const std::vector<Camera> &cameras,
                const Journal &journal)
        : request(request), secrets(secrets), journal(journal)
    {
        for (const auto &[serial, places] : sharedSerials(cameras)) {
            for (const std::size_t place : places)
                shared[serial] += (shared[serial].empty() ? "" : ", ") + cameras[place].place.id + " (" +
                                  cameras[place].model + ')';
        }
    }

    void prepare(Job &job)
    {
        if (job.outcome)
            return;
        throwIfInterrupted();
        if (job.camera->lock == Lock::None) {
            job.outcome = noLockOutcome(job.isNamed);
            return;
        }
        auto reason = refusal(job);
        throwIfInterrupted(); // what was broken off has given no secret
        if (!reason)
            return;
        if (reason->code == ReasonCode::NoSecret)
            job.outcome = withoutSecret(job);
        if (!job.outcome)
            job.outcome = refused(job, request, std::move(*reason));
    }

private:
    /// What becomes of a camera that needs no secret, which only a look tells.
    std::optional<Outcome> withoutSecret(const Job &job) const
    {
        Camera &camera = *job.camera;
        if (!camera.wasLooked)
            lookInto(camera);
        if (camera.lock == Lock::None)
            return noLockOutcome(job.isNamed);
        if (request.action == Action::Unlock && camera.lock == Lock::Unlocked)
            return Outcome{Result::Unchanged, {}, {}, {}};
        return std::nullopt;
    }

    std::optional<Reason> refusal(Job &job)
    {
        Camera &camera = *job.camera;
        const Selection &selection = request.selection;
        const bool goesBySerial =
            !selection.serials.empty() && selection.ids.empty() && selection.macs.empty();
        job.goesBySerial = goesBySerial ||
                           (request.needsCurrent() && secrets.goesBySerial(camera, Secrets::Kind::Current)) ||
                           (request.needsNew() && secrets.goesBySerial(camera, Secrets::Kind::New));
        if (hasSharedSerial(camera) && goesBySerial)
            return Reason{ReasonCode::SharedSerial, sharedText(camera),
                          "Choose between them with --id; torvane list tells the identifiers."};
        if (request.action != Action::Change)
            return request.needsCurrent() ? resolve(job, Secrets::Kind::Current) : std::nullopt;
        return refusalOfChange(job);
    }

    std::optional<Reason> refusalOfChange(Job &job)
    {
        const Camera &camera = *job.camera;
        if (auto reason = refusalOfBegun(request, journal, camera))
            return reason;
        if (!request.onChanged.empty()) {
            if (auto reason = refusalOfHook(camera))
                return reason;
        }
        job.rules.relock = request.relock;
        if (camera.lock == Lock::Unlocked && !request.relock && !job.rules.tryNewFirst)
            return Reason{ReasonCode::Unlocked,
                          "The camera is unlocked, so its old password can't be proved.",
                          "Lock it first, or --relock."};
        if (auto reason = resolveOld(job))
            return reason;
        if (auto reason = resolve(job, Secrets::Kind::New))
            return reason;
        return ruleFault(*job.next, job.current ? &*job.current : nullptr);
    }

    // Its line tells the MAC address too, by which a vault can know two cameras of one serial number apart.
    std::optional<Reason> refusalOfHook(const Camera &camera) const
    {
        const char *const next = "Change this camera without --on-changed.";
        if (!isFitForCommand(camera.serial))
            return Reason{ReasonCode::Vault,
                          "The serial number has characters that are not passed to a command.", next};
        if (hasSharedSerial(camera) && (namesSerial(request.onChanged) || !camera.mac))
            return Reason{ReasonCode::SharedSerial, sharedText(camera), next};
        return std::nullopt;
    }

    // A camera that could not be asked may turn out to be on the factory's, and one whose change was begun may have been.
    std::optional<Reason> resolveOld(Job &job)
    {
        const Camera &camera = *job.camera;
        if (takeFactorys(job, secrets))
            return std::nullopt;
        auto reason = resolve(job, Secrets::Kind::Current);
        const bool maybeFactory = camera.password == Password::Unknown || job.rules.tryNewFirst;
        return maybeFactory && reason && reason->code == ReasonCode::NoSecret ? std::nullopt : reason;
    }

    std::optional<Reason> resolve(Job &job, Secrets::Kind kind)
    {
        Secrets::Resolution resolution = secrets.resolve(*job.camera, kind, hasSharedSerial(*job.camera));
        if (auto *const reason = std::get_if<Reason>(&resolution)) {
            if (reason->code == ReasonCode::SharedSerial)
                reason->text = sharedText(*job.camera);
            return std::move(*reason);
        }
        (kind == Secrets::Kind::Current ? job.current : job.next) = std::move(std::get<Secret>(resolution));
        return std::nullopt;
    }

    std::string sharedText(const Camera &camera) const
    {
        return "Several cameras have this serial number: " + shared.at(camera.serial) + '.';
    }

    bool hasSharedSerial(const Camera &camera) const { return shared.contains(camera.serial); }

    const Request &request;
    Secrets &secrets;
    const Journal &journal;
    std::map<std::string, std::string> shared; // by serial number, who bears it
};

void refuseSharedSecrets(Jobs &jobs, const Request &request)
{
    std::vector<const Secret *> news;
    for (const Job &job : jobs)
        news.push_back(job.next && !job.outcome ? &*job.next : nullptr);
    for (auto &[place, reason] : sharedSecretFaults(news))
        jobs[place].outcome = refused(jobs[place], request, std::move(reason));
}

} // namespace

bool prepareJobs(Jobs &jobs, const Request &request, Secrets &secrets, const std::vector<Camera> &cameras,
                 const Journal &journal)
{
    Preparation preparation(request, secrets, cameras, journal);
    for (Job &job : jobs)
        preparation.prepare(job);
    if (!request.secrets.allowShared)
        refuseSharedSecrets(jobs, request);
    return std::ranges::any_of(
        jobs, [](const Job &job) { return job.outcome && job.outcome->result == Result::Refused; });
}

std::optional<Reason> prepareOpened(Job &job, bool hasTwin, const Request &request, Secrets &secrets,
                                    const Journal &journal)
{
    const Camera &camera = *job.camera;
    if (job.begunAs && !isBegunOne(*job.begunAs, camera))
        return Reason{ReasonCode::Vanished, "Another camera stands in the place of the one that was begun.",
                      "Plug that one in, then run change --resume again."};
    if (request.action != Action::Change)
        return std::nullopt;
    if (auto reason = refusalOfBegun(request, journal, camera))
        return reason;
    const bool wasFactorys = job.isFactorys;
    if (takeFactorys(job, secrets) || !wasFactorys)
        return std::nullopt;
    job.current.reset();
    Secrets::Resolution own = secrets.resolve(camera, Secrets::Kind::Current, hasTwin);
    if (auto *const reason = std::get_if<Reason>(&own)) {
        const bool maybeNew = job.rules.tryNewFirst && reason->code == ReasonCode::NoSecret;
        return maybeNew ? std::nullopt : std::optional(std::move(*reason));
    }
    job.current = std::move(std::get<Secret>(own));
    return ruleFault(*job.next, &*job.current);
}

} // namespace fleet
