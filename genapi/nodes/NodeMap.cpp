// SPDX-License-Identifier: MIT
// See the header.
#include "NodeMap.h"

#include "EnumerationNode.h"
#include "Limits.h"
#include "NodeFactory.h"
#include "NodeFormula.h"
#include "PortNode.h"
#include "Raise.h"

#include <cstring>
#include <string>
#include <utility>

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::gcstring;
using GenICam_3_2_TVN::GenericException;
using GenICam_3_2_TVN::PropertyException;

namespace {

constexpr const char *sourceFileName = "GenApi/NodeMap";

/// Holds a flag true as long as it lives.
class Making
{
public:
    explicit Making(bool &flag) : flag{flag} { flag = true; }
    Making(const Making &) = delete;
    Making &operator=(const Making &) = delete;
    ~Making() { flag = false; }

private:
    bool &flag;
};

} // namespace

NodeMap::NodeMap(std::shared_ptr<const Description> description, const gcstring &deviceName,
                 bool enableCaching)
    : description{std::move(description)}, deviceName{deviceName}, cachingEnabled{enableCaching}
{}

void NodeMap::Poll(std::int64_t elapsedTime)
{
    if (elapsedTime > 0)
        registers_.letPass(static_cast<std::uint64_t>(elapsedTime));
}

void NodeMap::GetNodes(NodeList_t &list)
{
    list.clear();
    for (const pugi::xml_node element : description->nodes()) {
        try {
            if (!description->find(element.attribute("Name").value()).isDoubled)
                list.push_back(&nodeOf(element));
        } catch (const GenericException &) {
            continue; // GetNode() says why
        }
    }
}

INode *NodeMap::GetNode(const gcstring &name)
{
    return find(std::string_view{name});
}

Node *NodeMap::find(std::string_view name)
{
    const Description::Found found = description->find(name);
    requireSingle(found, name);
    return found.element ? &nodeOf(found.element) : findEntry(name);
}

void NodeMap::requireSingle(const Description::Found &found, std::string_view name) const
{
    if (found.isDoubled)
        raise<PropertyException>(
            sourceFileName, trail_.told(shown(name), "Node '" + shown(name) + "' is defined more than once"));
}

/// Entries of different enumerations share names, so they stand in no index: "EnumEntry_PixelFormat_Mono8" is
/// taken apart at each underscore until an enumeration and its entry fit.
Node *NodeMap::findEntry(std::string_view name)
{
    constexpr std::string_view prefix = "EnumEntry_";
    if (!name.starts_with(prefix) || name.size() > limits::entryNameLength)
        return nullptr;
    name.remove_prefix(prefix.size());
    for (std::size_t cut = name.find('_'); cut != std::string_view::npos; cut = name.find('_', cut + 1)) {
        const std::string_view owner = name.substr(0, cut);
        const Description::Found found = description->find(owner);
        if (std::strcmp(found.element.name(), "Enumeration") != 0)
            continue;
        requireSingle(found, owner);
        auto &enumeration = dynamic_cast<EnumerationNode &>(nodeOf(found.element));
        if (Node *const entry = enumeration.find(name.substr(cut + 1)))
            return entry;
    }
    return nullptr;
}

Node &NodeMap::nodeOf(pugi::xml_node element)
{
    if (const auto known = nodes.find(element); known != nodes.end())
        return *known->second;
    auto failure = failures.find(element);
    if (failure == failures.end()) {
        try {
            return *nodes.emplace(element, make(element)).first->second;
        } catch (const PropertyException &fault) {
            failure = failures.emplace(element, fault.GetDescription()).first;
        }
    }
    const std::string &text = failure->second; // "Node 'Gain': no pValue"
    raise<PropertyException>(sourceFileName, trail_.told(text.substr(6, text.find("': ") - 6), text));
}

std::unique_ptr<Node> NodeMap::make(pugi::xml_node element)
{
    const Making making{isMaking};
    return makeNode(*this, element);
}

bool NodeMap::Connect(IPortStacked *port)
{
    return Connect(static_cast<IPort *>(port), deviceName);
}

bool NodeMap::Connect(IPortStacked *port, const gcstring &portName)
{
    return Connect(static_cast<IPort *>(port), portName);
}

bool NodeMap::Connect(IPort *port)
{
    return Connect(port, deviceName);
}

bool NodeMap::Connect(IPort *port, const gcstring &portName)
{
    auto *const node = dynamic_cast<PortNode *>(find(std::string_view{portName}));
    if (node == nullptr)
        return false;
    node->connect(port);
    registers_.forget();
    return true;
}

bool NodeMap::ParseSwissKnifes(GenICam_3_2_TVN::gcstring_vector *errors)
{
    bool areAllParsed = true;
    for (const pugi::xml_node element : description->formulaNodes()) {
        try {
            NodeFormula::check(nodeOf(element));
        } catch (const GenericException &fault) {
            areAllParsed = false;
            if (errors != nullptr)
                errors->emplace_back(fault.GetDescription());
        }
    }
    return areAllParsed;
}

} // namespace GenApi_3_2_TVN
