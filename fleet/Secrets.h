// SPDX-License-Identifier: MIT
// Where the secrets of a run come from. For each camera the first of: its line in the file of passwords, the command, the
// file for all, the terminal.
#pragma once

#include "Camera.h"
#include "PasswordsFile.h"
#include "Secret.h"

#include <functional>
#include <optional>
#include <string>
#include <variant>

namespace fleet {

/// Empty texts were not given. No text is a secret.
struct SecretOptions
{
    std::string passwordsFile; ///< "-" is standard input
    std::string passwordCommand;
    std::string newPasswordCommand;
    std::string passwordFile;    ///< "-" is standard input
    std::string newPasswordFile; ///< "-" is standard input
    bool allowShared = false;
};

class Secrets
{
public:
    enum class Kind
    {
        Current,
        New
    };
    using Resolution = std::variant<Secret, Reason>;
    /// Asks the user for the secret of one camera; nothing where there is nobody to ask, or the user gave none.
    using Ask = std::function<std::optional<Secret>(const Camera &, Kind)>;

    /// Reads the files.
    /// \param needsNew  the run sets new passwords
    /// \throws UsageError  a file or line of it is refused
    Secrets(const SecretOptions &options, bool needsNew, Ask ask);

    /// The secret for \p camera, or why there is none. Runs the command, or asks, where it comes to that.
    /// \param hasSharedSerial  another camera bears this serial number: then no secret goes by it
    Resolution resolve(const Camera &camera, Kind kind, bool hasSharedSerial);

    /// Whether the file of passwords has one for \p camera.
    bool hasLine(const Camera &camera, Kind kind) const { return inFile(camera, kind); }

    /// Whether a line or a command tells the secret of \p camera by its serial number.
    bool goesBySerial(const Camera &camera, Kind kind) const;

private:
    Resolution find(const Camera &camera, Kind kind, bool hasSharedSerial);
    const Secret *inFile(const Camera &camera, Kind kind) const;
    const std::string &command(Kind kind) const;

    const SecretOptions options;
    const Ask ask;
    PasswordsFile passwords;
    Secret current; // for all
    Secret next;    // for all
};

} // namespace fleet
