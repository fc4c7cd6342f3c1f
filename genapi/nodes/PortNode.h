// SPDX-License-Identifier: MIT
// The kind Port: where the registers of a description meet the port of the device.
#pragma once

#include "IPort.h"
#include "Node.h"

namespace GenApi_3_2_TVN {

class PortNode : public Node, public IPort
{
public:
    using Node::Node;

    /// \param port  stays the caller's; null leaves the node without one
    void connect(IPort *port) { connected = port; }
    bool isConnected() const { return connected != nullptr; }

    /// \throws AccessException  no port is connected; what the port throws passes through
    void Read(void *buffer, std::int64_t address, std::int64_t length) override;
    void Write(const void *buffer, std::int64_t address, std::int64_t length) override;

protected:
    EAccessMode ownAccessMode(AccessQuestion question) const override;

private:
    IPort &requirePort() const;

    IPort *connected = nullptr;
};

} // namespace GenApi_3_2_TVN
