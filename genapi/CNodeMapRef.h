// SPDX-License-Identifier: MIT
// The owner of a node map: it loads the description, forwards to the node map, and ends it when the last of
// its copies goes.
#pragma once

#include "CNodeMapFactory.h"
#include "GenericException.h"
#include "IDestroy.h"
#include "INodeMap.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace GenApi_3_2_TVN {

/// The parameters of a device whose features are reached by name only.
class CGeneric_XMLLoaderParams
{
public:
    virtual void _Initialize(INodeMap *) {}
    virtual ~CGeneric_XMLLoaderParams() = default;
};

/// Without a node map, each operation but _GetSupportedSchemaVersions throws AccessException. The order of
/// the virtual operations is part of the contract, and so are the lines that the exceptions bear.
/// Copies share the node map. Their count is a plain number: copies of one reference stay on one thread.
template <class TCameraParams>
class CNodeMapRefT : public TCameraParams
{
    using gcstring = GenICam_3_2_TVN::gcstring;

public:
    explicit CNodeMapRefT(const gcstring &deviceName = "Device") : deviceName{deviceName} {}
    CNodeMapRefT(const CNodeMapRefT &other) : TCameraParams{other} { share(other); }
    CNodeMapRefT &operator=(const CNodeMapRefT &other);
    ~CNodeMapRefT() override { _Destroy(); }

    /// Each makes the node map, named "Device" from an archive and by its own name from a text. The bytes are
    /// not referred to afterwards. A failure leaves the reference as it was.
    /// \throws RuntimeException  "Node map already created"; and what the factory throws
    void _LoadXMLFromZIPData(const void *data, std::size_t size);
    void _LoadXMLFromString(const gcstring &text);

    virtual void _GetSupportedSchemaVersions(GenICam_3_2_TVN::gcstring_vector &versions) const
    {
        CNodeMapFactory{}.GetSupportedSchemaVersions(versions);
    }
    virtual gcstring _GetDeviceName() const { return present(402).GetDeviceName(); }
    virtual void _Poll(std::int64_t elapsedTime) { present(410).Poll(elapsedTime); }
    virtual void _GetNodes(NodeList_t &nodes) const { present(418).GetNodes(nodes); }
    virtual INode *_GetNode(const gcstring &name) const { return present(442).GetNode(name); }
    virtual std::uint64_t _GetNumNodes() const { return present(426).GetNumNodes(); }
    virtual void _EnableCaching(bool enable) { present(434).EnableCaching(enable); }
    virtual void _InvalidateNodes() const { present(450).InvalidateNodes(); }
    virtual bool _Connect(IPortStacked *port) { return present(490).Connect(port); }
    virtual bool _Connect(IPortStacked *port, const gcstring &portName)
    {
        return present(482).Connect(port, portName);
    }
    virtual bool _Connect(IPort *port) { return present(474).Connect(port); }
    virtual bool _Connect(IPort *port, const gcstring &portName)
    {
        return present(466).Connect(port, portName);
    }
    virtual bool _ParseSwissKnifes(GenICam_3_2_TVN::gcstring_vector *errors = nullptr) const
    {
        return present(458).ParseSwissKnifes(errors);
    }

    /// Gives up the node map and with it the device name; the node map ends with the last copy.
    void _Destroy();

private:
    static constexpr const char *sourceFileName = "GenApi/NodeMapRef";

    INodeMap &present(unsigned line) const;
    void requireAbsent(unsigned line) const;
    void create(CNodeMapFactory &factory, const gcstring &name);
    void store(INodeMap *map, std::unique_ptr<std::uint32_t> count);
    void share(const CNodeMapRefT &other);

    gcstring deviceName;
    INodeMap *nodeMap = nullptr;
    std::uint32_t *nodeMapRefCount = nullptr;
};

template <class TCameraParams>
CNodeMapRefT<TCameraParams> &CNodeMapRefT<TCameraParams>::operator=(const CNodeMapRefT &other)
{
    if (this == &other)
        return *this;
    _Destroy();
    TCameraParams::operator=(other);
    share(other);
    return *this;
}

template <class TCameraParams>
void CNodeMapRefT<TCameraParams>::_LoadXMLFromZIPData(const void *data, std::size_t size)
{
    requireAbsent(370);
    CNodeMapFactory factory{ContentType_ZippedXml, data, size, CacheUsage_Automatic, false};
    create(factory, "Device");
}

template <class TCameraParams>
void CNodeMapRefT<TCameraParams>::_LoadXMLFromString(const gcstring &text)
{
    requireAbsent(357);
    CNodeMapFactory factory{ContentType_Xml, text.c_str(), text.length(), CacheUsage_Automatic, false};
    create(factory, deviceName);
}

template <class TCameraParams>
void CNodeMapRefT<TCameraParams>::_Destroy()
{
    INodeMap *const map = std::exchange(nodeMap, nullptr);
    std::uint32_t *const count = std::exchange(nodeMapRefCount, nullptr);
    if (map == nullptr)
        return;
    deviceName = "Device";
    if (--*count != 0)
        return;
    delete count;
    if (auto *const destroyable = dynamic_cast<IDestroy *>(map))
        destroyable->Destroy();
}

template <class TCameraParams>
INodeMap &CNodeMapRefT<TCameraParams>::present(unsigned line) const
{
    if (nodeMap != nullptr)
        return *nodeMap;
    throw GenICam_3_2_TVN::ExceptionReporter<GenICam_3_2_TVN::AccessException>(sourceFileName, line)
        .Report("Feature not present (reference not valid)");
}

template <class TCameraParams>
void CNodeMapRefT<TCameraParams>::requireAbsent(unsigned line) const
{
    if (nodeMap != nullptr)
        throw GenICam_3_2_TVN::ExceptionReporter<GenICam_3_2_TVN::RuntimeException>(sourceFileName, line)
            .Report("Node map already created");
}

template <class TCameraParams>
void CNodeMapRefT<TCameraParams>::create(CNodeMapFactory &factory, const gcstring &name)
{
    auto count = std::make_unique<std::uint32_t>(0U);
    store(factory.CreateNodeMap(name, true), std::move(count));
}

template <class TCameraParams>
void CNodeMapRefT<TCameraParams>::store(INodeMap *map, std::unique_ptr<std::uint32_t> count)
{
    if (map == nullptr || count == nullptr)
        return;
    nodeMap = map;
    nodeMapRefCount = count.release();
    ++*nodeMapRefCount;
}

template <class TCameraParams>
void CNodeMapRefT<TCameraParams>::share(const CNodeMapRefT &other)
{
    deviceName = other.deviceName;
    nodeMap = other.nodeMap;
    nodeMapRefCount = other.nodeMapRefCount;
    if (nodeMapRefCount != nullptr)
        ++*nodeMapRefCount;
}

/// The reference to a node map whose features are reached by name.
class CNodeMapRef : public CNodeMapRefT<CGeneric_XMLLoaderParams>
{
public:
    using CNodeMapRefT::CNodeMapRefT;
};

} // namespace GenApi_3_2_TVN
