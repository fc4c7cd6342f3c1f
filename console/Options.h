// SPDX-License-Identifier: MIT
// The command line of torvane_console as plain values. Nothing here knows the back end: main hands the values
// on to its presets.
#pragma once

#include <optional>
#include <string>

/// What one command line asks for. An empty text and a false flag mean that the option was not given; a given
/// text is never empty. Texts are the bytes of the command line, unconverted.
struct Options
{
    std::string producerFile;    ///< path; instead of a search
    std::string serial;          ///< serial number of the camera
    std::string password;        ///< the password in force
    std::string passwordFile;    ///< where to read it instead; "-" is standard input
    std::string newPassword;     ///< the password to set
    std::string newPasswordFile; ///< where to read it instead; "-" is standard input
    bool unlock = false;
    bool lock = false;
    bool factoryReset = false;
    bool listLibraries = false;
    bool listDevices = false;

    /// The text that --help or --version asks for, with its line end. When it is there, nothing else is to be
    /// done.
    std::optional<std::string> answer;
};

/// Reads the command line. No file is opened and no camera is touched.
/// \throws UsageError  an unknown or surplus argument, a missing or empty value, or options that exclude each
///     other
Options parseOptions(int argc, const char *const *argv);

/// Overwrites the passwords of a command line that parseOptions has read, so that the list of processes shows them no
/// longer than needed. \p argv ends with a null pointer.
void wipePasswords(int argc, char **argv);
