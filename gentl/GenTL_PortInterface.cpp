// SPDX-License-Identifier: MIT
// The port with its node map; the load of the description is in DescriptionLoad.cpp.
#include "GenTL_PortInterface.h"

#include "GenTL_Interface.h"
#include "gcstring.h"

#include <utility>

namespace GenICam_Interfaces {

namespace {

constexpr const char *deviceName = "Device";

} // namespace

GenTL_PortInterface::GenTL_PortInterface(const PORT_HANDLE &portHandle,
                                         std::shared_ptr<GenTL_Interface> genTLInterface,
                                         std::uint32_t urlIndex)
    : GenTL_PortInterfaceBase(portHandle, std::move(genTLInterface)),
      urlIndex(urlIndex),
      nodeMapRef(deviceName)
{
    loadDescription();
}

GenTL_PortInterface::GenTL_PortInterface(const PORT_HANDLE &portHandle, GenTL_Interface *genTLInterface,
                                         std::uint32_t urlIndex)
    : GenTL_PortInterfaceBase(portHandle, genTLInterface), urlIndex(urlIndex), nodeMapRef(deviceName)
{
    loadDescription();
}

GenTL_PortInterface::~GenTL_PortInterface() = default;

GenApi_3_2_TVN::INode *GenTL_PortInterface::getNode(const std::string &name) const
{
    return nodeMapRef._GetNode(GenICam_3_2_TVN::gcstring(name.c_str()));
}

} // namespace GenICam_Interfaces
