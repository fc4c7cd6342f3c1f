// SPDX-License-Identifier: MIT
// See the header.
#include "Trail.h"

#include "Limits.h"
#include "Node.h"
#include "Raise.h"

#include <string_view>

namespace GenApi_3_2_TVN {
namespace {

using GenICam_3_2_TVN::PropertyException;

constexpr const char *sourceFileName = "GenApi/Trail";

/// Of a long way the first and the last names.
std::string shown(const std::vector<std::string> &way)
{
    constexpr std::size_t half = limits::shownItems / 2;
    std::string text;
    for (std::size_t place = 0; place < way.size(); ++place) {
        const bool isShown = place < half || place + half + 1 >= way.size();
        if (isShown)
            text += (place == 0 ? "" : " > ") + way[place];
        else if (place == half)
            text += " > ...";
    }
    return text;
}

constexpr std::size_t nodesPerCall = limits::stepsPerCall / limits::stepsPerNode;

std::string quoted(const Node &node)
{
    return "Node '" + node.name() + "'";
}

} // namespace

Trail::Step::Step(Trail &trail, const Node &node, Aspect aspect, const char *by) : trail{trail}
{
    if (node.isAsked(aspect))
        trail.refuseCircle(node, aspect, by);
    if (trail.waiting.empty())
        trail.begin();
    else
        trail.spend(limits::stepsPerNode);
    if (trail.waiting.size() == limits::chainLength)
        raise<PropertyException>(sourceFileName, quoted(*trail.waiting.front().node) + ": more than " +
                                                     std::to_string(limits::chainLength) +
                                                     " nodes in a row (" + trail.wayTo(node) + ")");
    trail.waiting.push_back({&node, aspect, by});
    node.setAsked(aspect, true);
}

Trail::Step::~Step()
{
    trail.waiting.back().node->setAsked(trail.waiting.back().aspect, false);
    trail.waiting.pop_back();
}

void Trail::begin()
{
    spent = 0;
    calls += openCalls == 0 ? 1 : 0;
}

void Trail::spend(std::size_t steps)
{
    spent += steps;
    if (isSpent())
        raise<PropertyException>(sourceFileName, quoted(*waiting.front().node) + ": leads to more than " +
                                                     std::to_string(nodesPerCall) +
                                                     " nodes, or to formulas of as much work");
}

bool Trail::isSpent() const
{
    return spent > limits::stepsPerCall;
}

std::vector<const Node *> Trail::askingForValueOf(const Node &node) const
{
    std::vector<const Node *> asking;
    const Node *asked = &node;
    for (std::size_t place = waiting.size(); place-- > 1;) {
        if (waiting[place].node != asked || !std::string_view{waiting[place].by}.starts_with("pValue"))
            continue;
        asked = waiting[place - 1].node;
        asking.push_back(asked);
    }
    return asking;
}

std::string Trail::told(const std::string &cause, const std::string &text) const
{
    return told(waiting.size(), cause, text);
}

std::string Trail::toldOfArrival(const std::string &fault) const
{
    const Waiting &last = waiting.back();
    if (waiting.size() < 2)
        return quoted(*last.node) + fault;
    const Node &asking = *waiting[waiting.size() - 2].node;
    return told(waiting.size() - 1, asking.name(),
                quoted(asking) + ": " + last.by + " names '" + last.node->name() + "'" + fault);
}

/// \param length  how many of those that wait have led to the cause
std::string Trail::told(std::size_t length, const std::string &cause, const std::string &text) const
{
    std::vector<std::string> way = names(length);
    if (way.empty() || (way.size() == 1 && way.front() == cause))
        return text;
    if (way.back() != cause)
        way.push_back(cause);
    return "Node '" + way.front() + "': n" + text.substr(1) + " (" + shown(way) + ")";
}

/// A node that waits for another property of itself counts once.
std::vector<std::string> Trail::names(std::size_t length) const
{
    std::vector<std::string> way;
    for (std::size_t place = 0; place < length; ++place)
        if (place == 0 || waiting[place].node != waiting[place - 1].node)
            way.push_back(waiting[place].node->name());
    return way;
}

void Trail::refuseCircle(const Node &node, Aspect aspect, const char *by) const
{
    std::size_t first = waiting.size() - 1;
    while (waiting[first].node != &node || waiting[first].aspect != aspect)
        --first;
    const char *const firstBy = first + 1 < waiting.size() ? waiting[first + 1].by : by;
    const std::string where =
        (first == 0 ? "" : quoted(*waiting.front().node) + ": n") + quoted(node).substr(first == 0 ? 0 : 1);
    raise<PropertyException>(sourceFileName,
                             where + ": " + firstBy + " leads back to itself (" + wayTo(node) + ")");
}

std::string Trail::wayTo(const Node &last) const
{
    std::vector<std::string> way = names(waiting.size());
    way.push_back(last.name());
    return shown(way);
}

} // namespace GenApi_3_2_TVN
