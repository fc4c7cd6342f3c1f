// SPDX-License-Identifier: MIT
// What the user got wrong on the command line or in a password file, kept apart from failures of a run: it
// ends the program with a status of its own, before anything was done to a camera.
#pragma once

#include <stdexcept>

/// Its text is one line in the user's words, without a line end.
class UsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};
