// SPDX-License-Identifier: MIT
// Our side of the benchmarks: a node map, loaded as the binding loads one, over the generated camera's registers.
#pragma once

#include "CNodeMapRef.h"
#include "CPointer.h"
#include "CPortImpl.h"
#include "GeneratedCamera.h"

#include <cstdint>
#include <string>

class NodeMapCamera
{
public:
    explicit NodeMapCamera(const std::string &description)
    {
        nodeMap._LoadXMLFromString(GenICam_3_2_TVN::gcstring(description.data(), description.size()));
    }
    NodeMapCamera(const NodeMapCamera &) = delete;
    NodeMapCamera &operator=(const NodeMapCamera &) = delete;

    void connect() { nodeMap._Connect(&port, "Device"); }
    GenApi_3_2_TVN::INode *node(const std::string &name) const { return nodeMap._GetNode(name.c_str()); }
    std::int64_t integer(const std::string &name) const
    {
        return GenApi_3_2_TVN::CIntegerPtr
        {
            node(name)
            } -> GetValue();
    }

private:
    class Port : public GenApi_3_2_TVN::CPortImpl
    {
    public:
        void Read(void *buffer, std::int64_t address, std::int64_t length) override
        {
            readRegisters(static_cast<std::uint64_t>(address), buffer, static_cast<std::size_t>(length));
        }
        void Write(const void *, std::int64_t, std::int64_t) override {}
        GenApi_3_2_TVN::EAccessMode GetAccessMode() const override { return GenApi_3_2_TVN::RW; }
    };

    Port port;
    GenApi_3_2_TVN::CNodeMapRef nodeMap; // behind the port, so that it goes first
};
