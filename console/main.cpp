// SPDX-License-Identifier: MIT
// torvane_console: the options fill the presets of the back end, whose dialogue does the rest. Answers,
// tables and the dialogue go to standard output, usage errors to standard error.
#include "BackEnd.h"
#include "ConsoleIO.h"
#include "Options.h"
#include "PasswordFile.h"
#include "ProcessStart.h"
#include "UsageError.h"
#include "Wipe.h"

#include <exception>
#include <iostream>

namespace {

// Scripts rely on these; the other one, 0, is the back end's for a run that was finished or cancelled.
constexpr int statusFailure = 1;
constexpr int statusUsage = 2;

/// The password comes first: with "-" for both it is the first line of standard input.
void readPasswordFiles(Options &options)
{
    if (!options.passwordFile.empty())
        options.password = readPasswordFile(options.passwordFile);
    if (!options.newPasswordFile.empty())
        options.newPassword = readPasswordFile(options.newPasswordFile);
}

int list(const Options &options)
{
    BackEnd backEnd;
    if (options.listLibraries)
        backEnd.listLibraries();
    if (options.listDevices)
        backEnd.listDevices();
    return 0;
}

int run(const Options &options)
{
    BackEnd backEnd;
    backEnd.setPresetLibrary(options.producerFile);
    backEnd.setPresetSerial(options.serial);
    backEnd.setPresetPassword(options.password);
    backEnd.setPresetNewPassword(options.newPassword);
    backEnd.setPresetUnlock(options.unlock);
    backEnd.setPresetLock(options.lock);
    backEnd.setPresetFactoryReset(options.factoryReset);
    return backEnd.runConsole();
}

int start(int argc, char **argv)
{
    Options options = parseOptions(argc, argv);
    const WipeAtEnd wipePassword(options.password);
    const WipeAtEnd wipeNewPassword(options.newPassword);
    wipePasswords(argc, argv);
    if (options.answer) {
        std::cout << *options.answer << std::flush;
        return 0;
    }
    if (options.listLibraries || options.listDevices)
        return list(options);
    readPasswordFiles(options);
    return run(options);
}

} // namespace

int main(int argc, char **argv)
{
    prepareProcess();
    const auto tell = [](const char *text) {
        std::cerr << "torvane_console: " << console::shown(text, stderr) << '\n';
    };
    try {
        return start(argc, argv);
    } catch (const UsageError &error) {
        tell(error.what());
        std::cerr << "Try 'torvane_console --help'.\n";
        return statusUsage;
    } catch (const std::exception &error) {
        tell(error.what());
    } catch (...) {
        // Caught only so that the stack unwinds, which closes the camera for others to use.
        tell("unexpected failure");
    }
    return statusFailure;
}
