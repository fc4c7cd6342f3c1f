// SPDX-License-Identifier: MIT
#include "Fleet.h"

#include "StartFault.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

constexpr int patienceMs = 100'000;

// With the drive that a test may leave.
const std::string program = std::filesystem::absolute(TORVANE_FLEET).string();

std::string text(const QJsonValue &value)
{
    return value.toString().toStdString();
}

} // namespace

std::vector<QJsonObject> Ended::lines() const
{
    std::vector<QJsonObject> objects;
    for (const QByteArray &line : QByteArray::fromStdString(output).split('\n')) {
        if (!line.isEmpty())
            objects.push_back(QJsonDocument::fromJson(line).object());
    }
    return objects;
}

std::vector<std::string> Ended::outcomes() const
{
    std::vector<std::string> all;
    for (const QJsonObject &line : lines()) {
        if (line.contains("summary"))
            continue;
        std::string one = text(line["serial"]) + ' ' + text(line["result"]);
        const QJsonValue code = line["reason"].toObject()["code"];
        const QJsonValue inForce = line["in_force"];
        for (const QJsonValue &more : {code, inForce})
            one += more.isString() ? ' ' + text(more) : std::string();
        all.push_back(one);
    }
    std::ranges::sort(all);
    return all;
}

int Ended::summary(const char *key) const
{
    const auto all = lines();
    if (all.empty())
        return -1;
    return all.back()["summary"].toObject()[QLatin1String(key)].toInt(-1);
}

Fleet::Fleet(std::string_view toml)
    : simulator(toml),
      state("XDG_STATE_HOME", home.path().string()),
      localState("LOCALAPPDATA", home.path().string()),
      producers("GENICAM_GENTL64_PATH", std::filesystem::path(Simulator::cti()).parent_path().string())
{}

void Fleet::start(QProcess &process, const QStringList &arguments, const std::string &input) const
{
    process.start(QString::fromStdString(program), arguments);
    if (const std::string fault = fleet::startFault(process, patienceMs); !fault.empty())
        throw std::runtime_error(program + ": " + fault);
    process.write(QByteArray::fromStdString(input));
    process.closeWriteChannel();
    process.setTextModeEnabled(true); // what it prints has the line ends of the system
}

Ended Fleet::run(const QStringList &arguments, const std::string &input) const
{
    QProcess process;
    start(process, arguments, input);
    process.waitForFinished(patienceMs);
    const bool isNormal = process.exitStatus() == QProcess::NormalExit;
    return {isNormal ? process.exitCode() : -1, process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
}

Ended Fleet::act(QStringList arguments, const std::string &input) const
{
    arguments << "--json"
              << "--wait"
              << "90";
    return run(arguments, input);
}

QString Fleet::file(const char *name, const std::string &text) const
{
    const std::string path = (home.path() / name).string();
    std::ofstream(path, std::ios::binary) << text;
    std::filesystem::permissions(path,
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    return QString::fromStdString(path);
}

std::string Fleet::journal() const
{
    std::ifstream input(home.path() / "torvane/journal.jsonl");
    return {std::istreambuf_iterator<char>(input), {}};
}

int Fleet::opens(std::string_view id, std::string_view flags) const
{
    const std::string call = '"' + std::string(id) + "\", " + std::string(flags) + ") = 0";
    return static_cast<int>(
        std::ranges::count_if(simulator.calls("IFOpenDevice"),
                              [&](const std::string &line) { return line.find(call) != std::string::npos; }));
}

std::vector<std::string> Fleet::states() const
{
    std::vector<std::string> all;
    const QJsonObject list =
        QJsonDocument::fromJson(QByteArray::fromStdString(run({"list", "--json"}).output)).object();
    for (const QJsonValue &camera : list["cameras"].toArray())
        all.push_back(text(camera["serial"]) + ' ' + text(camera["lock"]) + ' ' + text(camera["password"]));
    return all;
}

std::string cameras(std::string_view all, std::string_view producer)
{
    std::string toml = "[[interface]]\nid = \"eth" + std::string(producer) + "\"\ntype = \"GEV\"\n";
    if (!producer.empty())
        toml += "producer = \"" + std::string(producer) + "\"\n";
    return toml + std::string(all);
}

std::string camera(std::string_view serial, std::string_view more, std::string_view mac)
{
    const std::string name(serial);
    std::string toml = "[[interface.camera]]\nserial = \"" + name + "\"\n";
    if (more.find("id = ") == std::string_view::npos)
        toml += "id = \"" + name + "\"\n";
    // An address of its own for each: the checksum of its name.
    std::uint32_t sum = 7;
    for (const char byte : name)
        sum = sum * 31 + static_cast<unsigned char>(byte);
    std::string own = "02:00:00:00:00:00";
    for (std::size_t place = 6; place < 17; place += 3, sum >>= 8) {
        own[place] = "0123456789abcdef"[sum >> 4 & 15];
        own[place + 1] = "0123456789abcdef"[sum & 15];
    }
    return toml + "mac = \"" + (mac.empty() ? own : std::string(mac)) + "\"\n" + std::string(more) + '\n';
}
