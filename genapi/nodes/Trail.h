// SPDX-License-Identifier: MIT
// The nodes that wait for one another during one call from outside. References between nodes come from the
// device and may lead anywhere: in circles, without end, or ever wider. The trail stops all three.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace GenApi_3_2_TVN {

class Node;

/// What is asked of a node. A node may wait for another property of itself, but never for the same one.
enum class Aspect : std::uint8_t
{
    Value = 1,
    Write = 2,
    Min = 4,
    Max = 8,
    Inc = 16,
    Access = 32,
    Text = 64,
    Entry = 128 ///< which entry of an enumeration is available
};

class Trail
{
public:
    /// One node on the way, for the life of the object.
    class Step
    {
    public:
        /// \param by  the child of the previous node that leads here; empty for a call from outside. Kept by
        ///            pointer: a literal.
        /// \throws PropertyException  the node waits for this already, or a limit is passed; it shows the way
        Step(Trail &trail, const Node &node, Aspect aspect, const char *by);
        ~Step();
        Step(const Step &) = delete;
        Step &operator=(const Step &) = delete;

    private:
        Trail &trail;
    };

    /// Counts work that a node on the way does, in steps of a formula.
    /// \throws PropertyException  the call has done more than limits::stepsPerCall
    void spend(std::size_t steps);
    /// Whether it has, so that all that the call still asks is refused.
    bool isSpent() const;

    /// How the node that is being asked was reached: "Node 'Gain': pValue names 'Text'"; from outside,
    /// "Node 'Text'".
    std::string arrival() const;

private:
    struct Waiting
    {
        const Node *node;
        Aspect aspect;
        const char *by;
    };

    std::string wayFrom(std::size_t first, const Node &last) const;
    [[noreturn]] void refuseCircle(const Node &node, Aspect aspect, const char *by) const;

    std::vector<Waiting> waiting;
    std::size_t spent = 0; ///< steps since the call from outside
};

} // namespace GenApi_3_2_TVN
