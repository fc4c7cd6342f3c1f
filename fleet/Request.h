// SPDX-License-Identifier: MIT
// What one call of the program asks for, as plain values: the command line has been judged, nothing has been opened.
#pragma once

#include "CheckRules.h"
#include "Outcome.h"
#include "Secrets.h"
#include "Selection.h"

#include <chrono>
#include <string>
#include <vector>

namespace fleet {

struct Request
{
    Action action = Action::List;
    Selection selection;
    std::vector<std::string> libraries; ///< producer files; empty: those that the environment names
    SecretOptions secrets;

    bool quick = false;  ///< list: open nothing
    bool relock = false; ///< verify, change: lock an unlocked camera to prove its password
    bool resume = false; ///< change: settle and go on with what a run has left
    bool dryRun = false;
    bool yes = false;    ///< reset: without asking
    bool noWait = false; ///< reset: don't wait for the camera to come back

    bool json = false;
    bool quiet = false;
    std::chrono::seconds wait{0}; ///< for another run to end
    std::string audit;            ///< file; empty: none
    std::string onChanged;        ///< command; empty: none

    std::vector<CheckRule> rules; ///< check: empty stands for its own
    std::string textfile;         ///< check: metrics file; empty: none

    /// Whether cameras may be written to.
    bool mayWrite() const { return action != Action::List && !dryRun; }
    bool needsCurrent() const
    {
        return action == Action::Verify || action == Action::Unlock || action == Action::Change;
    }
    bool needsNew() const { return action == Action::Change; }
};

} // namespace fleet
