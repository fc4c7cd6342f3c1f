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
    /// \throws UsageError  a line that is none of these objects, is longer than 64 KiB, names a serial number again, or lacks
    ///     the new password. It tells the number of the line and never its text. Or the input cannot be read.
    static PasswordsFile read(std::istream &input, const std::string &name, bool needsNew);

    /// Null where no line names \p serial. Valid as long as this object.
    const Entry *find(const std::string &serial) const;

private:
    std::unordered_map<std::string, Entry> entries;
};

} // namespace fleet
