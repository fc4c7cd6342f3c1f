// SPDX-License-Identifier: MIT
// Passwords by serial number, a JSON object a line:
//     {"serial": "A1", "current": "old password", "new": "new password"}
#pragma once

#include "Secret.h"

#include <istream>
#include <optional>
#include <string>
#include <unordered_map>

namespace fleet {

class PasswordsFile
{
public:
    struct Entry
    {
        std::optional<Secret> current;
        std::optional<Secret> next;
    };

    /// \param name  of the source, for messages
    /// \param needsNew  each line must have a new password
    /// \throws UsageError  lines that are none of these objects, are longer than 64 KiB, name a serial number again, or lack
    ///     the new password; or more than 100,000 lines. It tells the numbers of the first 20 together, and never their
    ///     text. Or the input cannot be read.
    static PasswordsFile read(std::istream &input, const std::string &name, bool needsNew);

    /// Null where no line names \p serial. Valid as long as this object.
    const Entry *find(const std::string &serial) const;

private:
    std::unordered_map<std::string, Entry> entries;
};

} // namespace fleet
