// SPDX-License-Identifier: MIT
#include "Check.h"

#include "CheckReport.h"
#include "Interruption.h"
#include "JsonFields.h"
#include "MetricsFile.h"
#include "Output.h"
#include "Survey.h"

#include <QDateTime>
#include <map>
#include <stdexcept>
#include <tuple>

namespace fleet {

namespace {

/// Each camera once. Of the entries of one that hangs on two ways the first that could tell counts, else the first.
std::vector<const Camera *> withoutDoubles(const std::vector<const Camera *> &entries)
{
    std::vector<const Camera *> cameras;
    std::map<std::tuple<std::string, std::string, std::string>, std::size_t> places;
    for (const Camera *const entry : entries) {
        const Place &first = entry->duplicateOf.value_or(entry->place);
        const auto [found, isNew] =
            places.try_emplace({first.producer, first.interface, first.id}, cameras.size());
        if (isNew)
            cameras.push_back(entry);
        else if (cameras[found->second]->password == Password::Unknown)
            cameras[found->second] = entry;
    }
    return cameras;
}

void doubtProducers(Tree &tree, std::vector<std::string> &doubts)
{
    if (tree.producers().empty())
        doubts.emplace_back("There is no producer. Run 'torvane doctor' to see why.");
    else if (tree.cameras().empty())
        doubts.emplace_back(noCameraSentence);
    for (const Producer &producer : tree.producers()) {
        if (producer.failure)
            doubts.push_back(producer.file + ": " + producer.failure->text);
    }
}

// Who is named and not there can't be counted.
void doubtChoice(const Survey &found, std::vector<std::string> &doubts)
{
    doubts.insert(doubts.end(), found.missing.begin(), found.missing.end());
    if (found.cameras.empty() && doubts.empty())
        doubts.emplace_back("No camera is left by the options.");
}

CheckFindings find(Tree &tree, const Request &request)
{
    CheckFindings findings;
    findings.rules = request.rules;
    if (findings.rules.empty())
        findings.rules.push_back({Trouble::Factory, CheckState::Critical, 0});
    doubtProducers(tree, findings.doubts);
    const Survey found = survey(tree, request);
    if (platform::isInterrupted()) {
        findings.doubts.emplace_back("The run was interrupted.");
        return findings;
    }
    if (!tree.cameras().empty())
        doubtChoice(found, findings.doubts);
    findings.cameras = withoutDoubles(found.cameras);
    return findings;
}

void leaveMetrics(const std::string &file, CheckFindings &findings)
{
    const std::int64_t countedAt = findings.doubts.empty() ? QDateTime::currentSecsSinceEpoch() : 0;
    try {
        writeMetrics(file, metricsText(findings.cameras, countedAt));
    } catch (const std::runtime_error &error) {
        findings.doubts.emplace_back(error.what());
    }
}

} // namespace

CheckState check(const Request &request)
{
    Tree tree(producerFiles(request.libraries));
    CheckFindings findings = find(tree, request);
    if (!request.textfile.empty())
        leaveMetrics(request.textfile, findings);
    if (request.json) {
        const QByteArray line = jsonLine(checkObject(findings, tree.producers()));
        writeResult({line.constData(), static_cast<std::size_t>(line.size())});
    } else {
        writeResult(pluginText(findings));
    }
    return findings.state();
}

} // namespace fleet
