// SPDX-License-Identifier: MIT
// What a check found, as monitoring systems read it.
#pragma once

#include "CheckRules.h"
#include "Tree.h"

#include <QJsonObject>
#include <string>
#include <vector>

namespace fleet {

struct CheckFindings
{
    std::vector<CheckRule> rules;
    std::vector<const Camera *> cameras; ///< the ones that count: each once, of the tree
    std::vector<std::string>
        doubts; ///< sentences: why not all could be counted, or the metrics not be written

    CameraCounts counts() const { return countCameras(cameras); }
    CheckState state() const { return judge(counts(), rules, doubts.empty()); }
};

/// The first line of a plugin's output, with its line end: "TORVANE UNKNOWN - text". Nothing in \p text, bytes as they came,
/// can break it: control bytes, and "|" where the performance data would begin, stand as \xNN.
std::string pluginLine(CheckState state, const std::string &text);

/// All of a plugin's output: its line with the counts as performance data, then a line for each doubt that stands beside
/// a broken rule, and for each camera by which one is broken, those on the factory password first.
std::string pluginText(const CheckFindings &findings);

/// The same for scripts, as docs/schema/check.schema.json has it.
QJsonObject checkObject(const CheckFindings &findings, const std::vector<Producer> &producers);

} // namespace fleet
