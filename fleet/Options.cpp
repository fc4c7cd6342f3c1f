// SPDX-License-Identifier: MIT
#include "Options.h"

#include <CLI/CLI.hpp>

namespace fleet {

namespace {

constexpr const char *version = "torvane 1.0.0.0";

constexpr const char *footer = R"(Exit status:
  0 done, or nothing to do   1 a producer failed, or unexpected   2 usage, or refused
  3 done in part   4 no camera   5 all held   6 another run is going on
  7 wrong password for all   130 interrupted

'torvane COMMAND --help' tells the options of a command, torvane(1) all of it. The check has statuses of its own.)";

constexpr const char *checkFooter = R"(Exit status, as that of monitoring plugins:
  0 OK   1 WARNING   2 CRITICAL   3 UNKNOWN: usage, no producer, no camera, or not all could be counted

Example:
  torvane check --max-factory 0 --warn-unknown 5)";

constexpr const char *selectionGroup =
    "Which cameras (* stands for any text; values of one option are alternatives)";

/// An empty text would count as not given, and a script with an unset variable would do what it did not ask for.
std::string refuseEmpty(const std::string &text)
{
    return text.empty() ? "the value is empty" : "";
}

CLI::Option *addText(CLI::App &command, const std::string &name, std::string &value, const std::string &kind,
                     const std::string &description)
{
    return command.add_option(name, value, description)->type_name(kind)->check(refuseEmpty, "");
}

CLI::Option *addTexts(CLI::App &command, const std::string &name, std::vector<std::string> &values,
                      const std::string &kind, const std::string &description)
{
    return command.add_option(name, values, description)
        ->type_name(kind)
        ->check(refuseEmpty, "")
        ->expected(1)
        ->take_all();
}

class Description
{
public:
    Description(CLI::App &app, Options &options) : app(app), options(options), request(options.request) {}

    void describe()
    {
        addList();
        addVerify();
        addUnlock();
        addLock();
        addChange();
        addReset();
        addCheck();
        addDoctor();
        addCompletion();
    }

private:
    CLI::App &addCommand(const std::string &name, Action action, const std::string &description,
                         const std::string &example)
    {
        CLI::App &command = *app.add_subcommand(name, description);
        // It outlives this object.
        command.parse_complete_callback([target = &options, action] { target->action = action; });
        command.footer("Example:\n  " + example);
        command.add_flag("--json", request.json, "Results as JSON, see docs/schema");
        command.add_flag("-q,--quiet", request.quiet, "No progress on the terminal");
        addTexts(command, "--library", request.libraries, "FILE",
                 "Use this producer file, and none of the environment's");
        return command;
    }

    // What the producers tell without a look into a camera.
    void addIdentity(CLI::App &command)
    {
        const std::string group = selectionGroup;
        Selection &selection = request.selection;
        addTexts(command, "--serial", selection.serials, "SERIAL", "By serial number")->group(group);
        addTexts(command, "--id", selection.ids, "ID", "By the identifier that the producer gives it")
            ->group(group);
        addTexts(command, "--model", selection.models, "MODEL", "By model")->group(group);
        addTexts(command, "--interface", selection.interfaces, "ID", "By the interface it hangs on")
            ->group(group);
        addText(command, "--from", options.from, "FILE", "By the serial numbers in FILE, one a line")
            ->group(group);
    }

    void addSelection(CLI::App &command)
    {
        const std::string group = selectionGroup;
        Selection &selection = request.selection;
        addIdentity(command);
        addTexts(command, "--mac", options.macs, "MAC", "By MAC address, in any usual spelling")
            ->group(group);
        command.add_flag("--factory", selection.onFactory, "Those on the factory password")->group(group);
        command.add_flag("--locked", selection.locked, "Those that are locked")->group(group);
        command.add_flag("--unlocked", selection.unlocked, "Those that are unlocked")->group(group);
        command.add_flag("--all", selection.all, "All cameras that the other options leave")->group(group);
    }

    void addCurrent(CLI::App &command)
    {
        const std::string group = "Secrets (the first of these that has one; else the terminal asks)";
        addText(command, "--passwords", request.secrets.passwordsFile, "FILE",
                R"(JSON lines {"serial", "current", "new"}; - is standard input)")
            ->group(group);
        addText(command, "--password-command", request.secrets.passwordCommand, "CMD",
                "Prints the password; {serial} stands for the serial number")
            ->group(group);
        addText(command, "--password-file", request.secrets.passwordFile, "FILE",
                "The password of all, in the first line; - is standard input")
            ->group(group);
    }

    void addWriting(CLI::App &command)
    {
        command.add_flag("-n,--dry-run", request.dryRun, "Resolve cameras and secrets, and write nothing");
        command.add_option("--wait", options.waitSeconds, "Wait so long for another run to end")
            ->type_name("SECONDS")
            ->check(CLI::Range(0, 86400));
        addText(command, "--audit", request.audit, "FILE", "Append a JSON line for each camera");
    }

    void addList()
    {
        CLI::App &command =
            addCommand("list", Action::List, "List cameras, their locks and whose password they are on",
                       "torvane list --factory --json");
        addSelection(command);
        command.add_flag("--quick", request.quick, "Open no camera: what needs a look is unknown");
    }

    void addVerify()
    {
        CLI::App &command =
            addCommand("verify", Action::Verify, "Find out whether a password opens the camera",
                       "torvane verify --all --passwords floor.jsonl");
        addSelection(command);
        addCurrent(command);
        addWriting(command);
        command.add_flag("--relock", request.relock,
                         "Lock an unlocked camera to find out; a wrong password then leaves it locked");
    }

    void addUnlock()
    {
        CLI::App &command = addCommand("unlock", Action::Unlock, "Unlock cameras",
                                       "torvane unlock --serial A1 --password-file a1.secret");
        addSelection(command);
        addCurrent(command);
        addWriting(command);
    }

    void addLock()
    {
        CLI::App &command = addCommand("lock", Action::Lock, "Lock cameras", "torvane lock --unlocked");
        addSelection(command);
        addWriting(command);
    }

    void addChange()
    {
        CLI::App &command = addCommand("change", Action::Change, "Give cameras new passwords, and prove them",
                                       "torvane change --all --password-command 'vault get {serial}' "
                                       "--new-password-command 'vault next {serial}'");
        addSelection(command);
        addCurrent(command);
        const std::string group = "New secrets";
        addText(command, "--new-password-command", request.secrets.newPasswordCommand, "CMD",
                "Prints the new password, and has stored it before")
            ->group(group);
        addText(command, "--new-password-file", request.secrets.newPasswordFile, "FILE",
                "The new password, in the first line; - is standard input")
            ->group(group);
        command.add_flag("--allow-shared", request.secrets.allowShared, "Several cameras may get the same")
            ->group(group);
        addWriting(command);
        command.add_flag("--relock", request.relock,
                         "Lock an unlocked camera to prove its password; a wrong one leaves it locked");
        command.add_flag("--resume", request.resume, "Settle, and go on with, what an ended run has left");
        addText(command, "--on-changed", request.onChanged, "CMD",
                "Run it after each change, a JSON line on its input");
    }

    void addReset()
    {
        CLI::App &command =
            addCommand("reset", Action::Reset, "Reset cameras to their factory settings and password",
                       "torvane reset --serial A1");
        addSelection(command);
        addWriting(command);
        command.add_flag("--yes", request.yes, "Don't ask");
        command.add_flag("--no-wait", request.noWait, "Don't wait for the camera to come back");
    }

    void addRule(CLI::App &command, const std::string &name, Trouble trouble, CheckState state,
                 const std::string &description)
    {
        const auto add = [rules = &request.rules, trouble, state](int most) {
            rules->push_back({trouble, state, most});
        };
        command.add_option_function<int>(name, add, description)
            ->type_name("N")
            ->check(CLI::Range(0, 1'000'000).description(""))
            ->group("Rules (without one: --max-factory 0)");
    }

    void addCheck()
    {
        CLI::App &command =
            addCommand("check", Action::List, "For monitoring: hold the cameras' states against rules", "");
        addSelection(command);
        addRule(command, "--max-factory", Trouble::Factory, CheckState::Critical,
                "CRITICAL if more are on the factory password");
        addRule(command, "--max-unlocked", Trouble::Unlocked, CheckState::Critical,
                "CRITICAL if more are unlocked");
        addRule(command, "--max-unknown", Trouble::Unknown, CheckState::Critical,
                "CRITICAL if more could not tell whose password they are on");
        addRule(command, "--warn-factory", Trouble::Factory, CheckState::Warning, "WARNING, as above");
        addRule(command, "--warn-unlocked", Trouble::Unlocked, CheckState::Warning, "WARNING, as above");
        addRule(command, "--warn-unknown", Trouble::Unknown, CheckState::Warning, "WARNING, as above");
        addText(command, "--textfile", request.textfile, "FILE.prom",
                "Write the counts for Prometheus into this file, which is replaced as a whole")
            ->check(
                [](const std::string &name) {
                    return name.ends_with(".prom") ? ""
                                                   : "no collector reads a file that does not end in .prom";
                },
                "");
        command.footer(checkFooter);
    }

    void addDoctor()
    {
        addIdentity(addCommand("doctor", Action::List, "Tell why a producer or a camera is not there",
                               "torvane doctor --serial A1"));
    }

    void addCompletion()
    {
        CLI::App &command = *app.add_subcommand("completion", "Print the completions for a shell");
        command.add_option("SHELL", options.shell)->required()->check(CLI::IsMember({"bash", "zsh"}));
    }

    CLI::App &app;
    Options &options;
    Request &request;
};

} // namespace

std::unique_ptr<CLI::App> describeOptions(Options &options)
{
    auto app = std::make_unique<CLI::App>(
        "Lists, checks, locks and unlocks industrial cameras by the hundred, and gives "
        "them new passwords.",
        "torvane");
    app->set_help_flag("--help", "Print this text");
    app->set_version_flag("--version", version, "Print the version");
    app->require_subcommand(1);
    app->footer(footer);
    Description(*app, options).describe();
    return app;
}

} // namespace fleet
