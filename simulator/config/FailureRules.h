// SPDX-License-Identifier: MIT
// Counts the calls that each failure rule matches, and says when one of them has to fail.
#pragma once

#include "CallSubject.h"
#include "Configuration.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

class FailureRules
{
public:
    /// Takes the rules of a configuration. A rule that stands there unchanged keeps its count, so that it
    /// goes on across a new reading of the file and across GCCloseLib.
    void replace(const std::vector<FailureRule> &rules);

    /// Counts the call for each rule that matches.
    /// \param ids  the identifiers that the call is about
    /// \throws GenTLError  the code and text of the first rule that strikes
    void strike(const CallSubject &subject, std::string_view id);

private:
    struct Counted
    {
        FailureRule rule;
        std::uint64_t calls = 0;
    };

    std::vector<Counted> rules;
};

} // namespace simulator
