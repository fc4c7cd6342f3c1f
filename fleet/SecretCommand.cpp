// SPDX-License-Identifier: MIT
#include "SecretCommand.h"

#include "Command.h"

#include <utility>

namespace fleet {

std::variant<Secret, std::string> runSecretCommand(const std::string &command, const std::string &serial)
{
    CommandResult result = runCommand(CommandKind::Question, command, serial, {});
    Secret secret(std::move(result.firstLine));
    if (!result.failure.empty())
        return result.failure;
    if (secret.isEmpty())
        return "The command printed no password.";
    if (secret.reveal().size() > 4096)
        return "The command printed a line of more than 4096 bytes.";
    return secret;
}

} // namespace fleet
