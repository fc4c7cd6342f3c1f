// SPDX-License-Identifier: MIT
// A camera of these tests: a description around the nodes that a test writes, loaded as the binding loads
// one, and connected to a FakePort.
#pragma once

#include "CNodeMapRef.h"
#include "CPointer.h"
#include "FakePort.h"

#include <cstdint>
#include <string>

/// A whole description with the port node "Device" in front of \p nodes.
inline std::string description(const std::string &nodes)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
           "<RegisterDescription ModelName=\"Test\" xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n"
           "<Port Name=\"Device\"/>\n" +
           nodes + "\n</RegisterDescription>\n";
}

/// A node of any kind.
inline std::string element(const std::string &kind, const std::string &name, const std::string &children)
{
    return "<" + kind + " Name='" + name + "'>" + children + "</" + kind + ">";
}

/// The register children of most tests: one at \p address.
inline std::string at(std::uint64_t address, int length, const std::string &more = "")
{
    return "<Address>" + std::to_string(address) + "</Address><Length>" + std::to_string(length) +
           "</Length>" + more + "<pPort>Device</pPort>";
}

/// An integer node with a value of its own.
inline std::string constant(const std::string &name, const std::string &value)
{
    return element("Integer", name, "<Value>" + value + "</Value>");
}

/// \p text \p count times. In it "#" stands for the number of the time, from 0, and "@" for the next one.
inline std::string repeated(int count, const std::string &text)
{
    std::string all;
    for (int time = 0; time < count; ++time) {
        for (const char letter : text)
            all += letter == '#'   ? std::to_string(time)
                   : letter == '@' ? std::to_string(time + 1)
                                   : std::string(1, letter);
    }
    return all;
}

inline const std::string readWrite = "<AccessMode>RW</AccessMode>";
inline const std::string bigEndian = "<Endianess>BigEndian</Endianess>";

/// The text of the GenericException that \p act throws; empty when it throws none.
template <class Act>
std::string refusal(Act &&act)
{
    try {
        act();
    } catch (const GenICam_3_2_TVN::GenericException &exception) {
        return exception.GetDescription();
    }
    return {};
}

class Camera
{
public:
    explicit Camera(const std::string &nodes) : Camera{whole, description(nodes)} {}
    /// \param text  a whole description
    static constexpr struct Whole
    {
    } whole{};
    Camera(Whole, const std::string &text)
    {
        nodeMap._LoadXMLFromString(GenICam_3_2_TVN::gcstring{text.data(), text.size()});
        isConnected = nodeMap._Connect(&port, "Device");
    }

    GenApi_3_2_TVN::INode *node(const std::string &name) { return nodeMap._GetNode(name.c_str()); }
    GenApi_3_2_TVN::CIntegerPtr integer(const std::string &name) { return {node(name)}; }
    GenApi_3_2_TVN::CStringPtr string(const std::string &name) { return {node(name)}; }
    GenApi_3_2_TVN::CBooleanPtr boolean(const std::string &name) { return {node(name)}; }
    GenApi_3_2_TVN::CFloatPtr real(const std::string &name) { return {node(name)}; }
    GenApi_3_2_TVN::CEnumerationPtr enumeration(const std::string &name) { return {node(name)}; }
    GenApi_3_2_TVN::CRegisterPtr registerOf(const std::string &name) { return {node(name)}; }
    GenApi_3_2_TVN::CCommandPtr command(const std::string &name) { return {node(name)}; }

    std::int64_t value(const std::string &name) { return integer(name)->GetValue(); }
    std::string text(const std::string &name) { return string(name)->GetValue().c_str(); }

    FakePort port;
    bool isConnected = false;
    GenApi_3_2_TVN::CNodeMapRef nodeMap; ///< behind the port, so that it goes first
};
