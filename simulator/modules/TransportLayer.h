// SPDX-License-Identifier: MIT
// The TL module: the list of interfaces as of its last refresh, and those that are open.
#pragma once

#include "Interface.h"
#include "Module.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace simulator {

class Producer;

class TransportLayer : public Module
{
public:
    /// \param producer  outlives the module
    explicit TransportLayer(Producer &producer);

    std::string id() const override;
    PortIdentity port() const override;

    /// Takes the interfaces of the configuration.
    /// \returns whether the list has changed
    bool refresh();

    const std::vector<std::shared_ptr<const InterfaceSettings>> &interfaces() const { return interfaces_; }

    /// \throws GenTLError  GC_ERR_INVALID_ID: not in the list
    const std::shared_ptr<const InterfaceSettings> &find(const std::string &id) const;

    /// \throws GenTLError  as find(); GC_ERR_RESOURCE_IN_USE: open already
    Interface &open(const std::string &id);
    void close(Interface &child);

    /// Tells every open interface of a new configuration, so that unplugged cameras go silent.
    void dropUnplugged();

private:
    Producer &producer;
    std::vector<std::shared_ptr<const InterfaceSettings>> interfaces_;
    std::map<std::string, std::unique_ptr<Interface>> opened;
};

/// The answer of TLGetInfo and, without a TL, of GCGetInfo.
/// \throws GenTLError  GC_ERR_INVALID_PARAMETER: unknown command
InfoValue producerInfo(TL_INFO_CMD command, const Configuration &configuration);

/// The answer of IFGetInfo and TLGetInterfaceInfo.
/// \throws GenTLError  as producerInfo()
InfoValue interfaceInfo(INTERFACE_INFO_CMD command, const InterfaceSettings &settings);

} // namespace simulator
