// SPDX-License-Identifier: MIT
#include "MetricsFile.h"

#include "CheckRules.h"
#include "ShownText.h"

#include <QFile>
#include <QSaveFile>
#include <map>
#include <stdexcept>
#include <string_view>

namespace fleet {

namespace {

/// \p bytes as the value of a label, without its quotation marks. No line feed is left to be escaped.
std::string labelValue(std::string_view bytes)
{
    std::string value;
    for (const char character : shownText(bytes)) {
        if (character == '\\' || character == '"')
            value += '\\';
        value += character;
    }
    return value;
}

std::string heading(const std::string &name, const std::string &help)
{
    return "# HELP " + name + ' ' + help + "\n# TYPE " + name + " gauge\n";
}

std::string countLines(const CameraCounts &counts)
{
    const auto line = [](const char *password, int count) {
        return std::string("torvane_cameras{password=\"") + password + "\"} " + std::to_string(count) + '\n';
    };
    return heading("torvane_cameras", "Cameras by whose password they are on; none: without the lock.") +
           line("factory", counts.factory) + line("user", counts.user) + line("none", counts.none) +
           line("unknown", counts.unknown) +
           heading("torvane_cameras_unlocked", "Cameras that are unlocked.") + "torvane_cameras_unlocked " +
           std::to_string(counts.unlocked) + '\n';
}

// A series twice would make the collector drop the whole file, so cameras with the same labels share one. An unknown
// password is neither 0 nor 1.
std::string factoryLines(const std::vector<const Camera *> &cameras)
{
    std::map<std::string, bool> isOnFactory;
    for (const Camera *const camera : cameras) {
        if (camera->password != Password::Unknown)
            isOnFactory["{serial=\"" + labelValue(camera->serial) + "\",model=\"" +
                        labelValue(camera->model) + "\"}"] |= camera->password == Password::Factory;
    }
    if (isOnFactory.empty())
        return {};
    std::string lines =
        heading("torvane_camera_factory",
                "Whether a camera with this serial number and model is on the factory password.");
    for (const auto &[labels, is] : isOnFactory)
        lines += "torvane_camera_factory" + labels + (is ? " 1\n" : " 0\n");
    return lines;
}

} // namespace

std::string metricsText(const std::vector<const Camera *> &cameras, std::int64_t countedAt)
{
    const std::string counted =
        cameras.empty() ? std::string() : countLines(countCameras(cameras)) + factoryLines(cameras);
    return counted +
           heading("torvane_check_timestamp_seconds",
                   "When the last check counted all cameras, in seconds since 1970; 0 if it could not.") +
           "torvane_check_timestamp_seconds " + std::to_string(countedAt) + '\n';
}

void writeMetrics(const std::string &path, const std::string &text)
{
    QSaveFile file(QString::fromStdString(path));
    constexpr auto forAll = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;
    const auto size = static_cast<qint64>(text.size());
    if (!file.open(QIODevice::WriteOnly) || file.write(text.data(), size) != size ||
        !file.setPermissions(forAll) || !file.commit())
        throw std::runtime_error("The metrics file '" + path +
                                 "' can't be written: " + file.errorString().toStdString() + '.');
}

} // namespace fleet
