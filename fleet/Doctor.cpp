// SPDX-License-Identifier: MIT
#include "Doctor.h"

#include "Clock.h"
#include "JsonFields.h"
#include "Output.h"
#include "ProducerFile.h"
#include "SearchPath.h"
#include "ShownName.h"
#include "Tree.h"

#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>
#include <optional>

namespace fleet {

namespace {

/// Which entry of the search path has led to \p file; empty where an option named it.
std::string entryOf(const std::string &file, const std::vector<SearchEntry> &entries)
{
    const auto found = std::ranges::find_if(entries, [&](const SearchEntry &entry) {
        return file.starts_with(entry.text) && file.find_last_of("/\\") == entry.text.size();
    });
    return found == entries.end() ? std::string() : found->text;
}

std::optional<std::string> outOfReach(const Camera &camera)
{
    switch (camera.access) {
    case Access::Unreachable:
        return "It can't be reached: another program holds it, or its address lies in another network.";
    case Access::Held:
        return "Another program holds it: close it there.";
    case Access::ReadOnly:
        return "It can only be read from here: the program that controls it has to let go of it.";
    case Access::Unknown:
        return "The producer does not tell whether it is free: check power, cable and address.";
    case Access::Free:
        break;
    }
    return std::nullopt;
}

class Findings
{
public:
    explicit Findings(const Request &request)
        : entries(request.libraries.empty() ? searchEntries() : std::vector<SearchEntry>()),
          tree(producerFiles(request.libraries))
    {
        const std::vector<std::string> unmatched = unmatchedValues(request.selection, tree.cameras());
        for (const std::string &value : unmatched)
            complain("No camera matches " + value + '.');
        isWhole = unmatched.empty();
        for (const std::size_t place : chooseByIdentity(request.selection, tree.cameras()))
            chosen.push_back(&tree.cameras()[place]);
    }

    Status status()
    {
        if (isWhole && !chosen.empty())
            return Status::Done;
        const auto failed = [](const Producer &producer) { return producer.failure.has_value(); };
        const auto &producers = tree.producers();
        return !producers.empty() && std::ranges::all_of(producers, failed) ? Status::Unexpected
                                                                            : Status::NoCamera;
    }

    void print()
    {
        if (entries.empty() && tree.producers().empty())
            write("GENICAM_GENTL64_PATH names no folder. A camera's driver sets it, often for new logins "
                  "only.\n");
        for (const SearchEntry &entry : entries)
            write("Folder " + shownText(entry.text) + ": " + wordOf(entry.state) + advice(entry.advice));
        for (const Producer &producer : tree.producers())
            print(producer);
        for (const Camera *camera : chosen) {
            if (const auto sentence = outOfReach(*camera))
                write("Camera " + shownName(*camera) + ", " + shownText(camera->place.id) + ": " +
                      wordOf(camera->access) + advice(*sentence));
        }
        write(std::to_string(chosen.size()) + " cameras behind " + std::to_string(tree.producers().size()) +
              " producers.\n");
    }

    QJsonObject toJson()
    {
        QJsonArray places;
        for (const SearchEntry &entry : entries)
            places.append(QJsonObject{{QStringLiteral("entry"), jsonText(std::string_view(entry.text))},
                                      {QStringLiteral("state"), QLatin1String(wordOf(entry.state))},
                                      {QStringLiteral("next"), jsonText(std::string_view(entry.advice))}});
        QJsonArray producers;
        for (const Producer &producer : tree.producers())
            producers.append(toJson(producer));
        QJsonArray cameras;
        for (const Camera *camera : chosen) {
            QJsonObject object = jsonOf(*camera);
            object[QStringLiteral("next")] = jsonText(outOfReach(*camera));
            cameras.append(object);
        }
        return {{QStringLiteral("schema"), 1},        {QStringLiteral("host"), hostName()},
                {QStringLiteral("places"), places},   {QStringLiteral("producers"), producers},
                {QStringLiteral("cameras"), cameras}, {QStringLiteral("status"), static_cast<int>(status())}};
    }

private:
    static void write(const std::string &line) { writeResult(line.ends_with('\n') ? line : line + '\n'); }
    static std::string advice(const std::string &sentence) { return sentence.empty() ? "" : ". " + sentence; }

    void print(const Producer &producer)
    {
        const ProducerVerdict verdict = judgeProducer(producer);
        std::string text = "Producer " + shownText(producer.file) + ": " + wordOf(verdict.state);
        if (!verdict.function.empty())
            text += " " + verdict.function;
        if (producer.isLoaded)
            text += ", GenTL " + producer.genTLVersion + ", " + shownText(producer.vendor) + ' ' +
                    shownText(producer.version) + ", " + std::to_string(producer.interfaces) +
                    " interfaces, " + std::to_string(producer.cameras) + " cameras, " +
                    std::to_string(producer.discovery.count()) + " ms";
        write(text + advice(verdict.advice));
        if (producer.failure)
            write("    " + shownText(producer.failure->text));
    }

    QJsonObject toJson(const Producer &producer) const
    {
        const ProducerVerdict verdict = judgeProducer(producer);
        QJsonObject object = jsonOf(producer);
        object[QStringLiteral("entry")] = jsonText(std::string_view(entryOf(producer.file, entries)));
        object[QStringLiteral("state")] = QLatin1String(wordOf(verdict.state));
        object[QStringLiteral("function")] =
            verdict.function.empty() ? QJsonValue() : jsonText(std::string_view(verdict.function));
        object[QStringLiteral("next")] = jsonText(std::string_view(verdict.advice));
        return object;
    }

    const std::vector<SearchEntry> entries;
    Tree tree;
    std::vector<const Camera *> chosen;
    bool isWhole = true; ///< all that was asked for is there
};

} // namespace

Status runDoctor(const Request &request)
{
    Findings findings(request);
    if (request.json) {
        const QByteArray line = jsonLine(findings.toJson());
        writeResult({line.constData(), static_cast<std::size_t>(line.size())});
    } else {
        findings.print();
    }
    return findings.status();
}

} // namespace fleet
