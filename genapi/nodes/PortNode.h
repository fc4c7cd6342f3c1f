// SPDX-License-Identifier: MIT
// The kind Port: where the registers of a description meet the port of the device.
#pragma once

#include "IPort.h"
#include "Node.h"

namespace GenApi_3_2_TVN {

class PortNode : public Node, public IPort
{
public:
    PortNode(NodeMap &nodeMap, pugi::xml_node element)
        : Node{nodeMap, element}, swapsBytes_{childSays("SwapEndianess", "Yes", "No")}
    {}

    /// \param port  stays the caller's; null leaves the node without one
    void connect(IPort *port) { connected = port; }
    bool isConnected() const { return connected != nullptr; }
    /// Whether numbers in its registers lie in the byte order that their nodes do not state.
    bool swapsBytes() const { return swapsBytes_; }

    /// \throws AccessException  no port is connected; what the port throws passes through
    void Read(void *buffer, std::int64_t address, std::int64_t length) override;
    /// As Read(). Drops all caches of the node map: which registers a write changes, only the device knows.
    void Write(const void *buffer, std::int64_t address, std::int64_t length) override;

protected:
    EAccessMode ownAccessMode(AccessQuestion question) const override;

private:
    IPort &requirePort() const;

    bool swapsBytes_;
    IPort *connected = nullptr;
};

} // namespace GenApi_3_2_TVN
