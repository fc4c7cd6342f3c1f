// SPDX-License-Identifier: MIT
#include "StressSupport.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace {

constexpr unsigned cameraCount = 24;
constexpr unsigned interfaceCount = 3;

// By the rest of a camera's number.
constexpr std::array cameraKinds{"lock = \"locked\"",  "lock = \"unlocked\"",
                                 "lock = \"default\"", "lock = \"locked\"",
                                 "lock = \"none\"",    "lock = \"locked\"\ndescription = \"zipped\"",
                                 "type = \"U3V\"",     "access = \"busy\""};

unsigned home(unsigned camera)
{
    return camera % interfaceCount;
}

std::string model(unsigned camera)
{
    return "SimCam " + std::to_string(camera % cameraKinds.size());
}

} // namespace

void Cables::change()
{
    isSlow = draw(20) == 0;
    QString kind = "plugged in";
    if (plugs.empty() && !before.empty()) {
        kind = "all back at once";
        plugs = std::exchange(before, {});
    } else if (plugs.size() < 5 || (plugs.size() < 18 && draw(3) == 0)) {
        plugIn(1 + draw(4));
    } else {
        kind = draw(2) ? shrink() : rearrange();
    }
    ++counts_[kind];
}

QString Cables::shrink()
{
    switch (draw(6)) {
    case 0:
        before = std::exchange(plugs, {});
        return "all gone at once";
    case 1:
        std::erase_if(plugs, [gone = draw(interfaceCount)](auto &plug) { return plug.interface == gone; });
        return "an interface gone";
    case 2:
    case 3:
        plugs.resize(plugs.size() - 1 - draw(3));
        return "from the end";
    default:
        plugs.erase(plugs.begin() + draw(plugs.size() - 1));
        return "from the middle";
    }
}

// What moves is another camera to the list, and comes last.
QString Cables::rearrange()
{
    const auto isAway = [](const Plug &plug) { return plug.interface != home(plug.camera); };
    auto place = plugs.begin() + draw(plugs.size());
    QString kind = "replaced by another";
    Plug next = *place;
    if (draw(2)) {
        kind = "to another interface";
        next.interface = (next.interface + 1 + draw(interfaceCount - 1)) % interfaceCount;
    } else if (draw(2) && std::ranges::any_of(plugs, isAway)) {
        kind = "back to its interface";
        place = std::ranges::find_if(plugs, isAway);
        next = {place->camera, home(place->camera)};
    } else {
        const auto index = place - plugs.begin();
        plugIn(1); // another one, since this is still plugged
        place = plugs.begin() + index;
        next = plugs.back();
        plugs.pop_back();
    }
    plugs.erase(place);
    plugs.push_back(next);
    return kind;
}

void Cables::plugIn(unsigned count)
{
    for (; count > 0; --count) {
        unsigned camera = draw(cameraCount);
        while (std::ranges::find(plugs, camera, &Plug::camera) != plugs.end())
            camera = (camera + 1) % cameraCount;
        plugs.push_back({camera, home(camera)});
    }
}

std::string Cables::toml() const
{
    std::string text = std::string("[producer]\nlatency_ms = ") + (isSlow ? "1\n" : "0\n");
    for (unsigned interface = 0; interface < interfaceCount; ++interface) {
        std::string cameras;
        for (const Plug &plug : plugs) {
            if (plug.interface == interface)
                cameras += "[[interface.camera]]\nid = \"C" + std::to_string(plug.camera) + "\"\nmodel = \"" +
                           model(plug.camera) + "\"\nreboot_ms = 30\n" +
                           cameraKinds[plug.camera % cameraKinds.size()] + "\n";
        }
        if (!cameras.empty())
            text += "[[interface]]\nid = \"hall-" + std::to_string(interface) + "\"\n" + cameras;
    }
    return text;
}

QStringList Cables::plugged() const
{
    QStringList cameras;
    for (const Plug &plug : plugs)
        cameras << QString("C%1 %2").arg(plug.camera).arg(model(plug.camera).c_str());
    cameras.sort();
    return cameras;
}

namespace {

// One line, such as: IFOpenDevice(h2, "C7", 3) = 0 h9
struct LoggedCall
{
    explicit LoggedCall(const QString &line)
        : function(line.section('(', 0, 0)),
          arguments(line.section('(', 1).section(')', 0, 0).split(", ")),
          result(line.section(' ', -1))
    {}

    QString function;
    QStringList arguments;
    QString result; // the last word
};

// Those of one log, by handle.
struct Handles
{
    void follow(const LoggedCall &call)
    {
        const QString parent = call.arguments[0];
        const auto isClosed = [&](const auto &open) { return open.first == parent || open.second == parent; };
        if (call.function.endsWith("Close") && call.result == "0")
            std::erase_if(parents, isClosed);
        else if (call.function.contains("Open") && call.result.startsWith('h'))
            parents[call.result] = parent;
        if (call.function == "IFOpenDevice")
            cameras[call.result] = call.arguments[1].section('"', 1, 1);
        else if (call.function == "DevGetPort")
            cameras[call.result] = cameras[parent];
    }

    std::map<QString, QString> parents; // of what is open
    std::map<QString, QString> cameras; // of devices and their ports, closed ones too
};

} // namespace

UserCalls readUserCalls(std::istream &log, const std::vector<Activation> &activations)
{
    static const std::set<std::string> functions{"TLOpen",     "TLClose",      "TLOpenInterface",
                                                 "IFClose",    "IFOpenDevice", "DevClose",
                                                 "DevGetPort", "GCWritePort"};
    UserCalls calls;
    Handles handles;
    Activation last{};
    auto next = activations.begin();
    std::uintmax_t position = 0;
    for (std::string line; std::getline(log, line); position += line.size() + 1) {
        if (!functions.contains(line.substr(0, line.find('('))))
            continue;
        const LoggedCall call(QString::fromStdString(line));
        handles.follow(call);
        const bool isOpen =
            call.function == "IFOpenDevice" && call.arguments[2] == "3"; // DEVICE_ACCESS_CONTROL
        const bool isWrite = call.function == "GCWritePort";
        calls.opens += isOpen;
        calls.writes += isWrite;
        while (next != activations.end() && next->begin <= position)
            last = *next++;
        const QString camera = handles.cameras[isOpen ? call.result : call.arguments[0]];
        const bool isRight = !camera.isEmpty() && camera == last.camera && (isWrite || position < last.end);
        if ((isOpen || isWrite) && !isRight)
            calls.strays << QString("%1: camera %2, activated %3").arg(line.c_str(), camera, last.camera);
    }
    for (const auto &[handle, parent] : handles.parents)
        calls.leftOpen << handle;
    return calls;
}
