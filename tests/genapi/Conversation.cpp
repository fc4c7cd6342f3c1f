// SPDX-License-Identifier: MIT
// See the header.
#include "Conversation.h"

#include "Features.h"

#include <array>
#include <charconv>
#include <functional>
#include <iomanip>
#include <map>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

using namespace GenApi_3_2_TVN;
using GenICam_3_2_TVN::gcstring;

namespace {

/// What stands behind an action.
struct Call
{
    Camera &camera;
    std::string name;
    std::string value;
    INode *node() const { return camera.node(name); }
};

std::string shown(const AnyValue &value)
{
    if (const auto *const text = std::get_if<std::string>(&value))
        return *text;
    if (const auto *const isOn = std::get_if<bool>(&value))
        return *isOn ? "true" : "false";
    if (const auto *const integer = std::get_if<std::int64_t>(&value))
        return std::to_string(*integer);
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.begin(), text.end(), std::get<double>(value)).ptr};
}

std::string countReads(const Call &call)
{
    const std::size_t before = call.camera.port.accesses.size();
    valueOf(call.node());
    return std::to_string(call.camera.port.accesses.size() - before);
}

std::string propertyOf(const Call &call)
{
    gcstring value;
    gcstring attribute;
    if (!CNodePtr(call.node())->GetProperty(call.value.c_str(), value, attribute))
        return "none";
    return std::string{value.c_str()} + "|" + attribute.c_str();
}

std::string entryOf(const Call &call)
{
    const CEnumEntryPtr entry{call.camera.enumeration(call.name)->GetCurrentEntry()};
    return entry ? entry->GetSymbolic().c_str() : "none";
}

template <class Item, class TextOf>
std::string joined(const std::vector<Item> &items, TextOf textOf)
{
    std::string row;
    for (const Item &item : items)
        row += (row.empty() ? "" : ", ") + std::string{textOf(item)};
    return row;
}

std::string featuresOf(const Call &call)
{
    NodeList_t features;
    CCategoryPtr(call.node())->GetFeatures(features);
    return joined(features, [](const INode *feature) { return std::string{feature->GetName().c_str()}; });
}

std::string symbolicsOf(const Call &call)
{
    GenICam_3_2_TVN::gcstring_vector symbolics;
    call.camera.enumeration(call.name)->GetSymbolics(symbolics);
    return joined(symbolics, [](const gcstring &symbolic) { return symbolic.c_str(); });
}

std::string takeAccesses(const Call &call)
{
    return joined(std::exchange(call.camera.port.accesses, {}),
                  [](const std::string &access) { return access; });
}

std::string bytesAt(const Call &call)
{
    std::ostringstream text;
    for (const unsigned byte :
         call.camera.port.get(std::stoull(call.name, nullptr, 16), std::stoul(call.value)))
        text << (text.tellp() == 0 ? "" : " ") << std::hex << std::setfill('0') << std::setw(2) << byte;
    return text.str();
}

void putBytes(const Call &call)
{
    std::istringstream words{call.value};
    std::vector<std::uint8_t> bytes;
    for (unsigned byte = 0; words >> std::hex >> byte;)
        bytes.push_back(static_cast<std::uint8_t>(byte));
    call.camera.port.set(std::stoull(call.name, nullptr, 16), bytes);
}

void changePort(const Call &call)
{
    FakePort &port = call.camera.port;
    port.failure = call.name == "fails" ? "cut off" : "";
    port.accessMode = call.name == "RO" ? RO : RW;
    IPort *const connected = call.name == "gone" ? nullptr : &port;
    if (!call.camera.nodeMap._Connect(connected, call.name.c_str()))
        call.camera.nodeMap._Connect(connected);
}

const std::map<std::string, std::function<std::string(const Call &)>> questions{
    {"get", [](const Call &call) { return shown(valueOf(call.node())); }},
    {"check", [](const Call &call) { return shown(valueOf(call.node(), true)); }},
    {"fresh", [](const Call &call) { return shown(valueOf(call.node(), false, true)); }},
    {"reads", countReads},
    {"min", [](const Call &call) { return shown(limitOf(call.node(), "min")); }},
    {"max", [](const Call &call) { return shown(limitOf(call.node(), "max")); }},
    {"inc", [](const Call &call) { return shown(limitOf(call.node(), "inc")); }},
    {"mode", [](const Call &call) { return modeOf(call.node()); }},
    {"done", [](const Call &call) { return shown(call.camera.command(call.name)->IsDone()); }},
    {"property", propertyOf},
    {"entry", entryOf},
    {"features", featuresOf},
    {"symbolics", symbolicsOf},
    {"bytes", bytesAt},
    {"wire", takeAccesses},
};

const std::map<std::string, std::function<void(const Call &)>> acts{
    {"set", [](const Call &call) { write(call.node(), call.value); }},
    {"force", [](const Call &call) { write(call.node(), call.value, false); }},
    {"touch", [](const Call &call) { CNodePtr(call.node())->InvalidateNode(); }},
    {"invalidate", [](const Call &call) { call.camera.nodeMap._InvalidateNodes(); }},
    {"uncached", [](const Call &call) { call.camera.nodeMap._EnableCaching(false); }},
    {"poll", [](const Call &call) { call.camera.nodeMap._Poll(std::stoll(call.name)); }},
    {"port", changePort},
    {"put", putBytes},
};

std::string outcome(const std::string &action, const Call &call)
{
    if (const auto question = questions.find(action); question != questions.end())
        return question->second(call);
    acts.at(action)(call);
    return "";
}

} // namespace

std::string answer(Camera &camera, const std::string &line)
{
    std::istringstream words{line};
    std::string action;
    Call call{camera, "", ""};
    words >> action >> call.name >> std::ws;
    std::getline(words, call.value);
    std::string text;
    try {
        const std::string refused = refusal([&] { text = outcome(action, call); });
        return refused.empty() ? text : refused;
    } catch (const std::runtime_error &failure) {
        return std::string{"port: "} + failure.what();
    }
}
