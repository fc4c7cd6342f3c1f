// SPDX-License-Identifier: MIT
// Results for people.
#include "MacAddress.h"
#include "Output.h"
#include "Report.h"
#include "ShownText.h"
#include "Table.h"
#include "Terminal.h"

#include <algorithm>

namespace fleet {

namespace {

std::string reasonText(const std::optional<Reason> &reason)
{
    return reason ? shownText(std::string(wordOf(reason->code)) + ": " + reason->text) : std::string();
}

std::vector<std::string> listRow(const Camera &camera)
{
    std::string reason = reasonText(camera.reason);
    if (camera.duplicateOf)
        reason = "the same camera as " + shownText(camera.duplicateOf->id) + " on " +
                 shownText(camera.duplicateOf->interface);
    return {shownText(camera.place.producer.substr(camera.place.producer.find_last_of("/\\") + 1)),
            shownText(camera.place.interface),
            shownText(camera.serial),
            shownText(camera.model),
            shownText(camera.userName.value_or("")),
            camera.ip ? formatIpAddress(*camera.ip) : "",
            camera.mac ? formatMacAddress(*camera.mac) : "",
            wordOf(camera.access),
            wordOf(camera.lock),
            wordOf(camera.password),
            reason};
}

class TableReport : public Report
{
public:
    explicit TableReport(Action action) : action(action) {}

    void list(const std::vector<Camera> &cameras, const std::vector<Producer> &) override
    {
        Table table({"PRODUCER", "INTERFACE", "SERIAL", "MODEL", "USER NAME", "IP", "MAC", "ACCESS", "LOCK",
                     "PASSWORD", "REASON"});
        for (const Camera &camera : cameras)
            table.addRow(listRow(camera));
        writeResult(table.text(platform::outputWidth()));
    }

    // Of a refused run those that stand against it are told, which are few, and not those that don't.
    void finished(const Job &job) override
    {
        if (job.outcome->result == Result::Skipped && job.outcome->reason->code == ReasonCode::NotReached)
            return;
        std::vector<std::string> row{shownText(job.camera->serial), shownText(job.camera->model),
                                     shownText(job.camera->place.id), wordOf(job.outcome->result)};
        if (action == Action::Change)
            row.emplace_back(job.outcome->inForce ? wordOf(*job.outcome->inForce) : "");
        row.push_back(reasonText(job.outcome->reason));
        rows.push_back(std::move(row));
        if (const auto &reason = job.outcome->reason; reason && !reason->next.empty())
            advice.push_back(std::string(wordOf(reason->code)) + ": " + shownText(reason->next));
    }

    void summary(const Summary &summary) override
    {
        std::vector<std::string> titles{"SERIAL", "MODEL", "ID", "RESULT"};
        if (action == Action::Change)
            titles.emplace_back("IN FORCE");
        titles.emplace_back("REASON");
        Table table(titles);
        for (std::vector<std::string> &row : rows)
            table.addRow(std::move(row));
        if (!rows.empty())
            writeResult(table.text(platform::outputWidth()) + '\n');
        writeResult(std::to_string(summary.selected) + " selected, " + std::to_string(summary.done) +
                    " done, " + std::to_string(summary.unchanged) + " unchanged, " +
                    std::to_string(summary.failed) + " failed, " + std::to_string(summary.refused) +
                    " refused.\n");
        std::ranges::sort(advice);
        advice.erase(std::unique(advice.begin(), advice.end()), advice.end());
        for (const std::string &line : advice)
            writeResult(line + '\n');
    }

private:
    const Action action;
    std::vector<std::vector<std::string>> rows;
    std::vector<std::string> advice; // what to do next, for each kind of reason
};

} // namespace

std::unique_ptr<Report> makeTableReport(Action action)
{
    return std::make_unique<TableReport>(action);
}

} // namespace fleet
