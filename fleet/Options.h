// SPDX-License-Identifier: MIT
// The one description of the program's commands and options, from which the parser, the help and the completions of shells
// are made.
#pragma once

#include "Request.h"

#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace fleet {

/// What the parser fills.
struct Options
{
    Request request;
    Action action = Action::List;
    std::vector<std::string> macs; ///< as they were written
    std::string from;              ///< file; "-" is standard input
    int waitSeconds = 0;
    std::string shell;
};

/// The parser. It refers to \p options, which must outlive it.
std::unique_ptr<CLI::App> describeOptions(Options &options);

} // namespace fleet
