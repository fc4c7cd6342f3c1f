// SPDX-License-Identifier: MIT
#include "CommandLine.h"

#include "Command.h"
#include "Completion.h"
#include "InputBuffer.h"
#include "MacAddress.h"
#include "Options.h"
#include "SecretLine.h"
#include "UsageError.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <span>
#include <sstream>
#include <string_view>
#include <utility>

namespace fleet {

namespace {

constexpr std::size_t longestSerial = 4096; // bytes

/// Serial numbers, a line each; blank lines and blanks at the ends do not count.
void readSerials(const std::string &name, std::vector<std::string> &serials)
{
    const std::size_t before = serials.size();
    InputBuffer buffer(name);
    InputStream input(buffer);
    constexpr const char *blanks = " \t\r";
    std::string line;
    for (std::size_t number = 1; readSecretLine(input, line, longestSerial, number == 1); ++number) {
        if (number > mostLines)
            throw UsageError(buffer.title() + " has more than 100,000 lines.");
        if (line.size() > longestSerial)
            throw UsageError(buffer.title() + ", line " + std::to_string(number) +
                             ": longer than 4096 bytes, which is no serial number.");
        const std::size_t begin = line.find_first_not_of(blanks);
        if (begin != std::string::npos)
            serials.push_back(line.substr(begin, line.find_last_not_of(blanks) + 1 - begin));
    }
    if (serials.size() == before)
        throw UsageError(buffer.title() + " has no serial number in it.");
}

void checkStandardInput(const std::string &from, const SecretOptions &secrets)
{
    const std::array files{from, secrets.passwordsFile, secrets.passwordFile, secrets.newPasswordFile};
    if (std::ranges::count(files, "-") > 1)
        throw UsageError(
            "Only one of --from, --passwords, --password-file and --new-password-file can be '-'.");
}

void readMacs(const std::vector<std::string> &texts, std::vector<std::uint64_t> &macs)
{
    for (const std::string &text : texts) {
        const auto mac = parseMacAddress(text);
        if (!mac)
            throw UsageError("--mac: '" + text + "' is no MAC address, such as 00:11:22:33:44:55.");
        macs.push_back(*mac);
    }
}

/// What is run once cameras have been changed must not turn out to be a slip then.
void checkCommands(const Request &request)
{
    const std::array commands{std::pair{"--password-command", &request.secrets.passwordCommand},
                              std::pair{"--new-password-command", &request.secrets.newPasswordCommand},
                              std::pair{"--on-changed", &request.onChanged}};
    std::string faults;
    for (const auto &[option, command] : commands) {
        if (const std::string fault = command->empty() ? "" : commandFault(*command); !fault.empty())
            faults += (faults.empty() ? "" : " ") + std::string(option) + ": " + fault;
    }
    if (!faults.empty())
        throw UsageError(faults);
}

void check(const Request &request)
{
    const bool needsChoice = request.action != Action::List && !request.resume;
    if (needsChoice && request.selection.choosesNothing())
        throw CommandLineError(
            "Choose cameras: --serial, --id, --mac, --model, --interface, --from, --factory, --locked, "
            "--unlocked or --all.");
    if (request.resume && !request.selection.choosesNothing())
        throw CommandLineError("--resume goes on with the cameras of the run that ended: choose none.");
    if (request.selection.locked && request.selection.unlocked)
        throw CommandLineError("No camera is both --locked and --unlocked.");
    if (request.quick && request.selection.needsLook())
        throw CommandLineError(
            "--quick opens no camera, so --mac, --factory, --locked and --unlocked can't be answered.");
    checkCommands(request);
}

} // namespace

bool asksForSummary(int argc, const char *const *argv)
{
    const std::span<const char *const> words(argv, static_cast<std::size_t>(argc));
    constexpr std::array actions{Action::Verify, Action::Unlock, Action::Lock, Action::Change, Action::Reset};
    const auto isCalled = [&](Action action) {
        return argc > 1 && std::string_view(words[1]) == wordOf(action);
    };
    const auto isJson = [](std::string_view word) { return word == "--json" || word.starts_with("--json="); };
    return std::ranges::any_of(actions, isCalled) && std::ranges::any_of(words, isJson);
}

CommandLine parseCommandLine(int argc, const char *const *argv)
{
    CommandLine line;
    Options options;
    const std::unique_ptr<CLI::App> app = describeOptions(options);
    const std::string first = argc > 1 ? argv[1] : "";
    const auto isFirst = [&](const CLI::App *command) { return command->get_name() == first; };
    if (!first.starts_with('-') && app->get_subcommands(isFirst).empty())
        throw CommandLineError(first.empty() ? "Which command?" : "'" + first + "' is no command.");
    try {
        app->parse(argc, argv);
    } catch (const CLI::Success &success) {
        std::ostringstream text;
        app->exit(success, text, text);
        line.answer = text.str();
        return line;
    } catch (const CLI::ParseError &error) {
        throw CommandLineError(error.what());
    }
    if (app->got_subcommand("completion")) {
        line.answer = completionScript(*app, options.shell);
        return line;
    }
    line.isDoctor = app->got_subcommand("doctor");
    checkStandardInput(options.from, options.request.secrets);
    line.request = std::move(options.request);
    line.request.action = options.action;
    line.request.wait = std::chrono::seconds(options.waitSeconds);
    if (!options.from.empty())
        readSerials(options.from, line.request.selection.serials);
    readMacs(options.macs, line.request.selection.macs);
    if (!line.isDoctor)
        check(line.request);
    return line;
}

} // namespace fleet
