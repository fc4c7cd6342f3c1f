// SPDX-License-Identifier: MIT
#include "Options.h"

#include "HelpText.h"
#include "ProducerFiles.h"
#include "UsageError.h"

#include <CLI/CLI.hpp>

#include <sstream>
#include <string_view>
#include <vector>

namespace {

constexpr const char *versionLine = "torvane_console 1.0.0.0";

/// An empty text would mean "not given" to the back end, and a script with an unset variable would end up in
/// a dialogue that it didn't ask for.
std::string refuseEmpty(const std::string &text)
{
    return text.empty() ? "the value is empty" : "";
}

CLI::Option *addText(CLI::App &app, const std::string &name, std::string &value, const std::string &kind,
                     const std::string &description)
{
    return app.add_option(name, value, description)->type_name(kind)->check(refuseEmpty, "");
}

void addCameraOptions(CLI::App &app, Options &options)
{
    const std::string group = "Producer and camera";
    addText(app, "--library", options.producerFile, "PATH", "Use this producer file instead of searching")
        ->group(group);
    addText(app, "--serial", options.serial, "SERIAL", "Use the camera with this serial number")
        ->group(group);
}

void addPasswordOptions(CLI::App &app, Options &options)
{
    const std::string group = "Passwords";
    const std::string fromFile = "Read it from the first line of FILE";
    addText(app, "--password", options.password, "TEXT", "The password in force")->group(group);
    addText(app, "--password-file", options.passwordFile, "FILE", fromFile)->group(group);
    addText(app, "--new-password", options.newPassword, "TEXT", "The password to set")->group(group);
    addText(app, "--new-password-file", options.newPasswordFile, "FILE", fromFile)->group(group);
}

void addActions(CLI::App &app, Options &options)
{
    const std::string group = "Actions";
    app.add_flag("--unlock", options.unlock, "Unlock even if the factory default is in force")->group(group);
    app.add_flag("--lock", options.lock, "Lock the camera before the run ends")->group(group);
    app.add_flag("--factory-reset", options.factoryReset, "Reset the camera to its factory settings")
        ->group(group);
}

void addLists(CLI::App &app, Options &options)
{
    const std::string group = "Lists";
    app.add_flag("--list-libraries", options.listLibraries, "List the producers that are found")
        ->group(group);
    app.add_flag("--list-devices", options.listDevices, "List the cameras that are found")->group(group);
}

/// Throws if a value that begins an argument of its own names an option: with an unset variable in front of it, a script
/// would set "--lock" as the password. What stands behind its "=" may be a secret and is not repeated.
void checkSeparateValue(const CLI::App &app, const std::string &option, std::string_view value)
{
    if (!value.starts_with('-')) // nearly every password, of which no copy is made here
        return;
    const std::string name(value.substr(0, value.find('=')));
    if (app.get_option_no_throw(name) == nullptr)
        return;
    throw UsageError(option + ": the value is missing, since " + name +
                     " is an option itself. If it is the value, write " + option + '=' + name +
                     (name == value ? "" : "=..."));
}

/// What the parser would take in another sense than a script with an unset variable means: for "--password=" it takes
/// the next argument as the value, and as a separate value it takes an option too.
void checkValues(const CLI::App &app, int argc, const char *const *argv)
{
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        const std::string name(argument.substr(0, argument.find('=')));
        const CLI::Option *option = app.get_option_no_throw(name);
        if (option == nullptr)
            continue;
        if (argument.size() == name.size() + 1)
            throw UsageError(name + ": " + refuseEmpty(""));
        if (argument == name && option->get_items_expected_min() > 0 && i + 1 < argc)
            checkSeparateValue(app, name, argv[++i]);
    }
}

void checkPasswords(const CLI::App &app)
{
    for (const std::string option : {"--password", "--new-password"})
        if (app.count(option) > 0 && app.count(option + "-file") > 0)
            throw UsageError(option + " and " + option + "-file can't be used together. Give one of them.");
}

/// A list only looks. What asks for more beside it would be dropped without a word, so it is refused.
void checkLists(const CLI::App &app)
{
    for (const char *list : {"--list-libraries", "--list-devices"}) {
        if (app.count(list) == 0)
            continue;
        if (app.count("--library") > 0)
            throw UsageError(std::string("--library can't be used with ") + list +
                             ", which shows what the search finds. "
                             "Name the producer's folder in GENICAM_GENTL64_PATH instead.");
        for (const CLI::Option *option : app.get_options())
            if (option->count() > 0 && option->get_group() != "Lists")
                throw UsageError(option->get_name() + " can't be used with " + list + ", which only lists.");
    }
}

} // namespace

Options parseOptions(int argc, const char *const *argv)
{
    Options options;
    CLI::App app{"Lock, unlock and change the password of industrial cameras.", "torvane_console"};
    addCameraOptions(app, options);
    addPasswordOptions(app, options);
    addActions(app, options);
    addLists(app, options);
    app.set_help_flag("--help", "Print this text");
    app.set_version_flag("--version", versionLine, "Print the version");
    app.footer(helpFooter + environmentSeparators() + helpEnd);
    app.allow_extras();
    checkValues(app, argc, argv);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success &success) {
        std::ostringstream text;
        app.exit(success, text, text);
        options.answer = text.str();
        return options;
    } catch (const CLI::ParseError &error) {
        throw UsageError(error.what());
    }
    if (const std::vector<std::string> extras = app.remaining(); !extras.empty())
        throw UsageError("Unknown option or surplus argument '" + extras.front() + "'");
    checkPasswords(app);
    checkLists(app);
    return options;
}

void wipePasswords(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        const std::string_view name = argument.substr(0, argument.find('='));
        if (name != "--password" && name != "--new-password")
            continue;
        char *password = name != argument ? argv[i] + name.size() + 1 : argv[++i];
        // Through a volatile pointer: nobody in this program reads it again.
        for (volatile char *byte = password; byte != nullptr && *byte != '\0'; ++byte)
            *byte = '\0';
    }
}
