// SPDX-License-Identifier: MIT
// See the header.
#include "Node.h"

#include "ElementText.h"
#include "Limits.h"
#include "NodeMap.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace GenApi_3_2_TVN {

using GenICam_3_2_TVN::AccessException;
using GenICam_3_2_TVN::gcstring;
using GenICam_3_2_TVN::OutOfRangeException;
using GenICam_3_2_TVN::PropertyException;

namespace {

std::string whole(const char *name)
{
    return name;
}

/// Of a name that may have megabytes nothing is looked at behind the cut.
std::string beginning(const char *name)
{
    return shown({name, strnlen(name, limits::shownNameLength + 1)});
}

pugi::xml_node structRegAround(pugi::xml_node element)
{
    const pugi::xml_node parent = element.parent();
    const bool isEntry =
        std::strcmp(element.name(), "StructEntry") == 0 && std::strcmp(parent.name(), "StructReg") == 0;
    return isEntry ? parent : pugi::xml_node{};
}

} // namespace

Node::Node(NodeMap &nodeMap, pugi::xml_node element)
    : nodeMap{nodeMap},
      element{element},
      structReg{structRegAround(element)},
      pIsImplemented{Link::ofChild(*this, "pIsImplemented")},
      pIsAvailable{Link::ofChild(*this, "pIsAvailable")},
      pIsLocked{Link::ofChild(*this, "pIsLocked")},
      imposedAccessMode{childAccessMode(*this, "ImposedAccessMode", RW)}
{}

gcstring Node::GetName() const
{
    return gcstring{std::string_view{composeName(whole)}};
}

std::string Node::name() const
{
    return composeName(beginning);
}

std::string Node::composeName(std::string (*part)(const char *)) const
{
    std::string own = part(element.attribute("Name").value());
    const pugi::xml_node parent = element.parent();
    const std::string outer = part(parent.attribute("Name").value());
    if (std::strcmp(element.name(), "EnumEntry") == 0)
        return "EnumEntry_" + outer + "_" + own;
    if (!own.empty())
        return own;
    return (outer.empty() ? part(parent.name()) : outer) + "/" + element.name();
}

bool Node::GetProperty(const gcstring &property, gcstring &value, gcstring &attribute) const
{
    if (property == "NodeType" || property == "Name") {
        value = property == "Name" ? GetName() : gcstring{element.name()};
        attribute = gcstring{};
        return true;
    }
    std::string values;
    std::string attributes;
    pugi::xml_node child = element.child(property.c_str());
    if (!child)
        return false;
    for (bool isFirst = true; child; child = child.next_sibling(property.c_str()), isFirst = false) {
        values += (isFirst ? "" : "\t") + textOf(child);
        attributes += (isFirst ? "" : "\t") + std::string{child.first_attribute().value()};
    }
    value = gcstring{std::string_view{values}};
    attribute = gcstring{std::string_view{attributes}};
    return true;
}

void Node::InvalidateNode()
{
    nodeMap.registers().forget();
}

EAccessMode Node::GetAccessMode() const
{
    return accessMode("", {});
}

Number Node::number(const char *by, Reading reading)
{
    const Trail::Step step{nodeMap.trail(), *this, Aspect::Value, by};
    return readNumber(reading);
}

void Node::setNumber(const char *by, Number value)
{
    const Trail::Step step{nodeMap.trail(), *this, Aspect::Write, by};
    nodeMap.registers().expire();
    writeNumber(value);
}

Number Node::minimum(const char *by)
{
    const Trail::Step step{nodeMap.trail(), *this, Aspect::Min, by};
    return readMinimum();
}

Number Node::maximum(const char *by)
{
    const Trail::Step step{nodeMap.trail(), *this, Aspect::Max, by};
    return readMaximum();
}

std::optional<Number> Node::increment(const char *by)
{
    const Trail::Step step{nodeMap.trail(), *this, Aspect::Inc, by};
    return readIncrement();
}

std::string Node::text(const char *by, Reading reading)
{
    const Trail::Step step{nodeMap.trail(), *this, Aspect::Text, by};
    return readText(reading);
}

void Node::setText(const char *by, const std::string &value)
{
    const Trail::Step step{nodeMap.trail(), *this, Aspect::Write, by};
    nodeMap.registers().expire();
    writeText(value);
}

std::int64_t Node::maximumLength(const char *by)
{
    const Trail::Step step{nodeMap.trail(), *this, Aspect::Max, by};
    return readMaximumLength();
}

EAccessMode Node::accessMode(const char *by, AccessQuestion question) const
{
    const Trail::Step step{nodeMap.trail(), *this, Aspect::Access, by};
    return conditionalAccessMode(question);
}

EAccessMode Node::conditionalAccessMode(AccessQuestion question) const
{
    AccessReasons *const reasons = question.reasons;
    if (pIsImplemented && !pIsImplemented->isTrue()) {
        if (reasons != nullptr)
            reasons->absence = reasonOf(*pIsImplemented, "since '", "' is ");
        return NI;
    }
    if (pIsAvailable && !pIsAvailable->isTrue()) {
        if (reasons != nullptr)
            reasons->pause = reasonOf(*pIsAvailable, "since '", "' is ");
        return NA;
    }
    const EAccessMode mode = narrower(imposedAccessMode, ownAccessMode(question));
    const bool isLocked = isWritable(mode) && pIsLocked && pIsLocked->isTrue();
    if (isLocked && reasons != nullptr)
        reasons->lock = reasonOf(*pIsLocked, "by '", "', which is ");
    return isLocked ? narrower(mode, RO) : mode;
}

std::string Node::reasonOf(const Link &condition, const char *before, const char *between)
{
    return before + condition.node().name() + between + condition.number({}).text();
}

pugi::xml_node Node::child(const char *tag) const
{
    if (const pugi::xml_node own = element.child(tag))
        return own;
    if (!structReg)
        return {};
    const auto &shared = sharedChildren();
    const auto found =
        std::ranges::find_if(shared, [tag](pugi::xml_node one) { return std::strcmp(one.name(), tag) == 0; });
    return found != shared.end() ? *found : pugi::xml_node{};
}

std::vector<pugi::xml_node> Node::placeChildren() const
{
    if (structReg)
        return sharedChildren();
    return {element.begin(), element.end()};
}

const std::vector<pugi::xml_node> &Node::sharedChildren() const
{
    const StructRegs::Shared &shared = nodeMap.structRegs().shared(structReg);
    if (shared.isTooMuch)
        fail<PropertyException>("its StructReg has more for its entries than " +
                                std::to_string(limits::structRegChildren) + " children with " +
                                std::to_string(limits::structRegAddressParts) + " parts of an address and " +
                                std::to_string(limits::structRegLength >> 10) + " KiB of text");
    return shared.children;
}

std::optional<std::string> Node::childText(const char *tag) const
{
    const pugi::xml_node found = child(tag);
    return found ? std::optional{textOf(found)} : std::nullopt;
}

std::optional<std::int64_t> Node::childInteger(const char *tag) const
{
    const pugi::xml_node found = child(tag);
    return found ? std::optional{numberOf<std::int64_t>(found)} : std::nullopt;
}

bool Node::childSays(const char *tag, std::string_view yes, std::string_view no) const
{
    const std::optional<std::string> text = childText(tag);
    if (!text || *text == no)
        return false;
    if (*text == yes)
        return true;
    fail<PropertyException>(std::string{tag} + ": '" + shown(*text) + "' is neither " + std::string{yes} +
                            " nor " + std::string{no});
}

template <>
std::int64_t Node::numberOf(pugi::xml_node child) const
{
    const std::string text = textOf(child);
    if (const std::optional<std::int64_t> value = parseInteger(text))
        return *value;
    fail<PropertyException>(std::string{child.name()} + ": '" + shown(text) + "' is not a 64-bit integer");
}

template <>
double Node::numberOf(pugi::xml_node child) const
{
    const std::string text = textOf(child);
    if (const std::optional<double> value = parseReal(text))
        return *value;
    fail<PropertyException>(std::string{child.name()} + ": '" + shown(text) + "' is not a number");
}

std::int64_t Node::attributeOf(pugi::xml_node child, const char *name) const
{
    const char *const text = child.attribute(name).value();
    if (const std::optional<std::int64_t> value = parseInteger(text))
        return *value;
    fail<PropertyException>(std::string{child.name()} + ": " + name + " '" + shown(text) +
                            "' is not a 64-bit integer");
}

std::int64_t Node::wholeOf(Number value) const
{
    if (const std::optional<std::int64_t> whole = value.rounded())
        return *whole;
    fail<OutOfRangeException>(withUnit(value) + " lies outside what 64 bits hold, " +
                              Number{lowestOf<std::int64_t>}.text() + " to " +
                              Number{highestOf<std::int64_t>}.text());
}

std::string Node::withUnit(Number value) const
{
    const std::string own = unit();
    return value.text() + (own.empty() ? "" : " " + own);
}

/// A number goes unchanged from an Integer or a Float to the node behind its value, which has no unit as a rule.
std::string Node::unit() const
{
    std::string found = childText("Unit").value_or("");
    for (const Node *const asking : nodeMap.trail().askingForValueOf(*this)) {
        const std::string_view kind = asking->element.name();
        if (!found.empty() || (kind != "Integer" && kind != "Float"))
            break;
        found = asking->childText("Unit").value_or("");
    }
    return shown(found);
}

void Node::refuseOutside(Number value, Number lowest, Number highest) const
{
    const bool isEmpty =
        !(lowest.real() <= highest.real()) || (std::isinf(lowest.real()) && lowest.real() == highest.real());
    fail<OutOfRangeException>(withUnit(value) + " lies outside its limits, at present " + withUnit(lowest) +
                              " to " + withUnit(highest) + (isEmpty ? ", between which nothing lies" : ""));
}

void Node::requireReadable() const
{
    if (!isReadable(accessMode("", {.includePort = false})))
        refuseAccess(false);
}

void Node::requireWritable() const
{
    if (!isWritable(accessMode("", {.includePort = false})))
        refuseAccess(true);
}

void Node::refuseAccess(bool isWrite) const
{
    AccessReasons reasons;
    const EAccessMode mode = accessMode("", {.includePort = false, .reasons = &reasons});
    const auto because = [](const std::string &reason) { return reason.empty() ? "" : ", " + reason; };
    if (mode == NI)
        fail<AccessException>("not implemented" + because(reasons.absence));
    const std::string &missing = reasons.pause.empty() ? reasons.absence : reasons.pause;
    if (isWrite && missing.empty() && !reasons.lock.empty())
        fail<AccessException>("locked " + reasons.lock);
    if (!isReadable(mode) && !isWritable(mode))
        fail<AccessException>("not available at present" + because(missing));
    fail<AccessException>(isWrite ? "can only be read" : "can only be written");
}

/// While it is being made, nothing of the call: its faults are kept for all later calls.
std::string Node::told(const std::string &fault) const
{
    const std::string text = "Node '" + name() + "': " + fault;
    return nodeMap.isMakingNode() ? text : nodeMap.trail().told(name(), text);
}

Number Node::readNumber(Reading)
{
    refuseUse("has no number");
}

void Node::writeNumber(Number)
{
    refuseUse("takes no number");
}

Number Node::readMinimum()
{
    refuseUse("has no minimum");
}

Number Node::readMaximum()
{
    refuseUse("has no maximum");
}

std::optional<Number> Node::readIncrement()
{
    return std::nullopt;
}

std::string Node::readText(Reading)
{
    refuseUse("has no text");
}

void Node::writeText(const std::string &)
{
    refuseUse("takes no text");
}

std::int64_t Node::readMaximumLength()
{
    refuseUse("has no text");
}

EAccessMode Node::ownAccessMode(AccessQuestion) const
{
    return RO;
}

void Node::refuseUse(const char *fault) const
{
    const std::string kind = element.name();
    raise<PropertyException>(
        "GenApi/Node",
        nodeMap.trail().toldOfArrival(", a " + shown(kind) +
                                      (isEvaluated() ? std::string{", which "} + fault
                                                     : ", a kind that this version does not evaluate")));
}

EAccessMode narrower(EAccessMode left, EAccessMode right)
{
    if (left == NI || right == NI)
        return NI;
    const bool readable = isReadable(left) && isReadable(right);
    const bool writable = isWritable(left) && isWritable(right);
    if (readable)
        return writable ? RW : RO;
    return writable ? WO : NA;
}

EAccessMode childAccessMode(const Node &node, const char *tag, EAccessMode otherwise)
{
    const std::optional<std::string> text = node.childText(tag);
    if (!text)
        return otherwise;
    if (*text == "RO")
        return RO;
    if (*text == "WO")
        return WO;
    if (*text == "RW")
        return RW;
    node.fail<PropertyException>(std::string{tag} + ": '" + shown(*text) + "' is none of RO, WO and RW");
}

} // namespace GenApi_3_2_TVN
