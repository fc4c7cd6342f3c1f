// SPDX-License-Identifier: MIT
// See the header.
#include "Trail.h"

#include "Limits.h"
#include "Node.h"
#include "Raise.h"

namespace GenApi_3_2_TVN {
namespace {

using GenICam_3_2_TVN::PropertyException;

constexpr const char *sourceFileName = "GenApi/Trail";

/// Names of a way that a message shows; of a longer one it shows the first and the last.
constexpr std::size_t shownNames = 8;

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
        trail.spent = 0;
    else
        trail.spend(limits::stepsPerNode);
    if (trail.waiting.size() == limits::chainLength)
        raise<PropertyException>(sourceFileName, quoted(*trail.waiting.front().node) + ": more than " +
                                                     std::to_string(limits::chainLength) +
                                                     " nodes in a row (" + trail.wayFrom(0, node) + ")");
    trail.waiting.push_back({&node, aspect, by});
    node.setAsked(aspect, true);
}

Trail::Step::~Step()
{
    trail.waiting.back().node->setAsked(trail.waiting.back().aspect, false);
    trail.waiting.pop_back();
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

std::string Trail::arrival() const
{
    const Waiting &last = waiting.back();
    if (waiting.size() < 2)
        return quoted(*last.node);
    return quoted(*waiting[waiting.size() - 2].node) + ": " + last.by + " names '" + last.node->name() + "'";
}

std::string Trail::wayFrom(std::size_t first, const Node &last) const
{
    std::string way;
    for (std::size_t place = first; place < waiting.size(); ++place) {
        const bool isShown = place < first + shownNames / 2 || place + shownNames / 2 >= waiting.size();
        if (isShown)
            way += waiting[place].node->name() + " > ";
        else if (place == first + shownNames / 2)
            way += "... > ";
    }
    return way + last.name();
}

void Trail::refuseCircle(const Node &node, Aspect aspect, const char *by) const
{
    std::size_t first = waiting.size() - 1;
    while (waiting[first].node != &node || waiting[first].aspect != aspect)
        --first;
    const char *const firstBy = first + 1 < waiting.size() ? waiting[first + 1].by : by;
    raise<PropertyException>(sourceFileName, quoted(node) + ": " + firstBy + " leads back to itself (" +
                                                 wayFrom(first, node) + ")");
}

} // namespace GenApi_3_2_TVN
