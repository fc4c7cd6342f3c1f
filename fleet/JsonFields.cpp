// SPDX-License-Identifier: MIT
#include "JsonFields.h"

#include "Clock.h"
#include "MacAddress.h"
#include "ShownText.h"

#include <QJsonDocument>

namespace fleet {

namespace {

/// An empty text is none.
QJsonValue knownText(const std::string &bytes)
{
    return bytes.empty() ? QJsonValue() : jsonText(std::string_view(bytes));
}

} // namespace

QJsonValue jsonText(std::string_view bytes)
{
    return QString::fromStdString(shownText(bytes));
}

QJsonValue jsonText(const std::optional<std::string> &bytes)
{
    return bytes ? jsonText(std::string_view(*bytes)) : QJsonValue();
}

QJsonValue jsonOf(const std::optional<Reason> &reason)
{
    if (!reason)
        return {};
    return QJsonObject{{QStringLiteral("code"), QLatin1String(wordOf(reason->code))},
                       {QStringLiteral("text"), jsonText(std::string_view(reason->text))},
                       {QStringLiteral("next"), knownText(reason->next)}};
}

QJsonObject jsonOf(const Place &place)
{
    return {{QStringLiteral("producer"), jsonText(std::string_view(place.producer))},
            {QStringLiteral("interface"), jsonText(std::string_view(place.interface))},
            {QStringLiteral("id"), jsonText(std::string_view(place.id))}};
}

QJsonObject jsonOf(const Camera &camera)
{
    QJsonObject object; // a camera that is missing has no place
    object[QStringLiteral("producer")] = knownText(camera.place.producer);
    object[QStringLiteral("interface")] = knownText(camera.place.interface);
    object[QStringLiteral("id")] = knownText(camera.place.id);
    object[QStringLiteral("host")] = hostName();
    object[QStringLiteral("model")] = knownText(camera.model);
    object[QStringLiteral("serial")] = knownText(camera.serial);
    object[QStringLiteral("user_name")] = knownText(camera.userName.value_or(std::string()));
    object[QStringLiteral("ip")] =
        camera.ip ? QJsonValue(QString::fromStdString(formatIpAddress(*camera.ip))) : QJsonValue();
    object[QStringLiteral("mac")] =
        camera.mac ? QJsonValue(QString::fromStdString(formatMacAddress(*camera.mac))) : QJsonValue();
    object[QStringLiteral("firmware")] = jsonText(camera.firmware);
    object[QStringLiteral("access")] = QLatin1String(wordOf(camera.access));
    object[QStringLiteral("lock")] = QLatin1String(wordOf(camera.lock));
    object[QStringLiteral("password")] = QLatin1String(wordOf(camera.password));
    object[QStringLiteral("reason")] = jsonOf(camera.reason);
    object[QStringLiteral("duplicate_of")] =
        camera.duplicateOf ? QJsonValue(jsonOf(*camera.duplicateOf)) : QJsonValue();
    return object;
}

QJsonObject jsonOf(const Producer &producer)
{
    return {{QStringLiteral("file"), jsonText(std::string_view(producer.file))},
            {QStringLiteral("gentl_version"), knownText(producer.genTLVersion)},
            {QStringLiteral("vendor"), knownText(producer.vendor)},
            {QStringLiteral("version"), knownText(producer.version)},
            {QStringLiteral("ms"), static_cast<qint64>(producer.discovery.count())},
            {QStringLiteral("interfaces"), static_cast<qint64>(producer.interfaces)},
            {QStringLiteral("cameras"), static_cast<qint64>(producer.cameras)},
            {QStringLiteral("reason"), jsonOf(producer.failure)}};
}

QJsonObject jsonOf(const Summary &summary)
{
    return {
        {QStringLiteral("selected"), summary.selected},   {QStringLiteral("done"), summary.done},
        {QStringLiteral("unchanged"), summary.unchanged}, {QStringLiteral("failed"), summary.failed},
        {QStringLiteral("refused"), summary.refused},     {QStringLiteral("status"), int(summary.status)}};
}

QByteArray jsonLine(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace fleet
