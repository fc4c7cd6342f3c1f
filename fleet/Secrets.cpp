// SPDX-License-Identifier: MIT
#include "Secrets.h"

#include "Command.h"
#include "PasswordRules.h"
#include "SecretCommand.h"
#include "SecretFile.h"
#include "UsageError.h"

#include <utility>

namespace fleet {

namespace {

Reason noSecret(std::string text, std::string next)
{
    return {ReasonCode::NoSecret, std::move(text), std::move(next)};
}

} // namespace

Secrets::Secrets(const SecretOptions &options, bool needsNew, Ask ask) : options(options), ask(std::move(ask))
{
    const bool hasOtherNew = !options.newPasswordCommand.empty() || !options.newPasswordFile.empty();
    std::string faults;
    const auto attempt = [&](const std::string &file, const auto &read) {
        if (file.empty())
            return;
        try {
            read();
        } catch (const UsageError &fault) {
            faults += (faults.empty() ? "" : " ") + std::string(fault.what());
        }
    };
    attempt(options.passwordsFile,
            [&] { passwords = readPasswordsFile(options.passwordsFile, needsNew && !hasOtherNew); });
    attempt(options.passwordFile, [&] { current = readSecretFile(options.passwordFile); });
    attempt(options.newPasswordFile, [&] { next = readSecretFile(options.newPasswordFile); });
    if (!faults.empty())
        throw UsageError(faults);
}

const Secret *Secrets::inFile(const Camera &camera, Kind kind) const
{
    const PasswordsFile::Entry *const entry = passwords.find(camera.serial);
    if (!entry)
        return nullptr;
    const std::optional<Secret> &secret = kind == Kind::Current ? entry->current : entry->next;
    return secret ? &*secret : nullptr;
}

const std::string &Secrets::command(Kind kind) const
{
    return kind == Kind::Current ? options.passwordCommand : options.newPasswordCommand;
}

bool Secrets::goesBySerial(const Camera &camera, Kind kind) const
{
    return inFile(camera, kind) || !command(kind).empty();
}

// The rules for new ones are PasswordRules'.
Secrets::Resolution Secrets::resolve(const Camera &camera, Kind kind, bool hasSharedSerial)
{
    Resolution found = find(camera, kind, hasSharedSerial);
    if (const Secret *const secret = std::get_if<Secret>(&found);
        secret && kind == Kind::Current && secret->reveal().size() > longestPassword)
        return Reason{ReasonCode::Rule, "The password is longer than 64 bytes, which no camera's is.",
                      "Give the password that is in force."};
    return found;
}

Secrets::Resolution Secrets::find(const Camera &camera, Kind kind, bool hasSharedSerial)
{
    if (hasSharedSerial && goesBySerial(camera, kind))
        return Reason{ReasonCode::SharedSerial,
                      "Another camera has the same serial number, by which its secret would go.",
                      "Choose one with --id, and give its secret by --password-file or --new-password-file."};
    if (const Secret *const secret = inFile(camera, kind))
        return secret->copy();
    if (!command(kind).empty()) {
        if (!isFitForCommand(camera.serial))
            return noSecret("The serial number has characters that are not passed to a command.",
                            "Give the secret of this camera by --passwords.");
        std::variant<Secret, std::string> answer = runSecretCommand(command(kind), camera.serial);
        if (Secret *const secret = std::get_if<Secret>(&answer))
            return std::move(*secret);
        return noSecret(std::get<std::string>(answer), "Run the command by hand for this serial number.");
    }
    if (const Secret &forAll = kind == Kind::Current ? current : next; !forAll.isEmpty())
        return forAll.copy();
    if (std::optional<Secret> typed = ask(camera, kind))
        return std::move(*typed);
    return noSecret(kind == Kind::Current ? "There is no password for this camera."
                                          : "There is no new password for this camera.",
                    "Give it by --passwords, a command or a file.");
}

} // namespace fleet
