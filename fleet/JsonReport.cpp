// SPDX-License-Identifier: MIT
// Results for scripts.
#include "Clock.h"
#include "JsonFields.h"
#include "Output.h"
#include "Report.h"

#include <QJsonArray>

namespace fleet {

namespace {

constexpr int schemaVersion = 1;

void write(const QJsonObject &object)
{
    const QByteArray line = jsonLine(object);
    writeResult({line.constData(), static_cast<std::size_t>(line.size())});
}

class JsonReport : public Report
{
public:
    JsonReport(Action action, QString run) : action(action), run(std::move(run)) {}

    void list(const std::vector<Camera> &cameras, const std::vector<Producer> &producers) override
    {
        QJsonArray cameraArray;
        for (const Camera &camera : cameras)
            cameraArray.append(fleet::jsonOf(camera));
        QJsonArray producerArray;
        for (const Producer &producer : producers)
            producerArray.append(fleet::jsonOf(producer));
        write({{QStringLiteral("schema"), schemaVersion},
               {QStringLiteral("cameras"), cameraArray},
               {QStringLiteral("producers"), producerArray}});
    }

    void finished(const Job &job) override
    {
        QJsonObject line = fleet::jsonOf(*job.camera);
        line[QStringLiteral("action")] = QLatin1String(wordOf(action));
        line[QStringLiteral("run")] = run;
        line[QStringLiteral("ms")] = static_cast<qint64>(job.outcome->duration.count());
        line[QStringLiteral("result")] = QLatin1String(wordOf(job.outcome->result));
        line[QStringLiteral("in_force")] =
            job.outcome->inForce ? QJsonValue(QLatin1String(wordOf(*job.outcome->inForce))) : QJsonValue();
        line[QStringLiteral("reason")] = fleet::jsonOf(job.outcome->reason);
        write(line);
    }

    void summary(const Summary &summary) override
    {
        write({{QStringLiteral("summary"), fleet::jsonOf(summary)}});
    }

private:
    const Action action;
    const QString run;
};

} // namespace

std::unique_ptr<Report> makeJsonReport(Action action, const QString &run)
{
    return std::make_unique<JsonReport>(action, run);
}

} // namespace fleet
